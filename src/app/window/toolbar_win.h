// The toolbar and the icons of the push buttons.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>

#include <vector>

#include "app/system/window_handles_win.h"

namespace app {

class Toolbar {
 public:
  // Puts the toolbar in place of the dialog's placeholder. Its buttons are always enabled.
  void Create(HWND dialog, int dpi);
  // Reloads all icons for this DPI.
  void LoadImages(int dpi);
  // Makes the toolbar as wide as the window.
  void Position();
  // Fills in the tooltip of a button, truncated to the size of the buffer.
  static void FillTip(NMTBGETINFOTIPW& request);
  // Frees the push buttons' icons; the toolbar's are freed with it.
  void DestroyButtonImages();

 private:
  void LoadButtonImages(int dpi, int size);

  HWND dialog_ = nullptr;
  HWND toolbar_ = nullptr;
  ImageList images_;
  std::vector<ImageList> buttonImages_;
};

}  // namespace app
