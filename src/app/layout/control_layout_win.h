// Applies the layout rules of anchor_layout.h to a dialog's controls.
#pragma once

#include "swr/system/windows_api_win.h"

#include <functional>
#include <span>
#include <vector>

#include "app/layout/anchor_layout.h"

namespace app {

class ControlLayout {
 public:
  // `controls` must outlive the object. `adjust`, if not null, may change the rectangles before
  // they are applied.
  explicit ControlLayout(std::span<const AnchoredControl> controls,
                         std::function<void(std::vector<LayoutRect>&)> adjust = {});

  // Records the positions of the controls and the size of the client area, from which later layouts
  // are computed.
  void Capture(HWND dialog);
  // Until the next Capture, Apply does nothing.
  void Forget() { isCaptured_ = false; }
  // Moves the controls to their positions for the current size.
  void Apply(HWND dialog) const;

 private:
  std::span<const AnchoredControl> controls_;
  std::function<void(std::vector<LayoutRect>&)> adjust_;
  bool isCaptured_ = false;
  SIZE baseClient_ = {};
  std::vector<LayoutRect> baseRects_;
};

}  // namespace app
