// Applies the layout rules of anchor_layout.h to the dialog's controls.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/window/anchor_layout.h"

namespace app {

class DialogLayout {
 public:
  // Stores where the controls stand and how large the client area is; later sizes are measured
  // against this.
  void Capture(HWND dialog);
  // Moves the controls to where they belong at the present size. Nothing before Capture.
  void Apply(HWND dialog, bool bannerShows, int dpi) const;

 private:
  bool isCaptured_ = false;
  LONG baseClientWidth_ = 0;
  LONG baseClientHeight_ = 0;
  LayoutRects baseRects_;
};

}  // namespace app
