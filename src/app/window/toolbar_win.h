// The toolbar and the pictures of the push buttons.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>

#include <vector>

#include "app/desktop/gdi_handles_win.h"

namespace app {

class Toolbar {
 public:
  // Puts the toolbar in the place of the dialog's placeholder. Its buttons can always be pressed.
  void Create(HWND dialog, int dpi);
  // Makes all pictures anew for this DPI.
  void LoadImages(int dpi);
  // Stretches the toolbar over the width of the window.
  void Position();
  // Fills in the tip of a button; cut to the room there is.
  static void FillTip(NMTBGETINFOTIPW& request);
  // Gives the push buttons' pictures back; the toolbar's go with it.
  void DestroyButtonImages();

 private:
  void LoadButtonImages(int dpi, int size);

  HWND dialog_ = nullptr;
  HWND toolbar_ = nullptr;
  ImageList images_;
  std::vector<ImageList> buttonImages_;
};

}  // namespace app
