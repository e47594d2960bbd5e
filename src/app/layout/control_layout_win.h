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
  // `controls` must outlive the object. `adjust`, if there is one, may change the rectangles before
  // they are applied.
  explicit ControlLayout(std::span<const AnchoredControl> controls,
                         std::function<void(std::vector<LayoutRect>&)> adjust = {});

  // Remembers where the controls are and how large the client area is; later sizes are measured
  // against this.
  void Capture(HWND dialog);
  // Until the next Capture, Apply does nothing.
  void Forget() { isCaptured_ = false; }
  // Moves the controls to where they belong at the present size.
  void Apply(HWND dialog) const;

 private:
  std::span<const AnchoredControl> controls_;
  std::function<void(std::vector<LayoutRect>&)> adjust_;
  bool isCaptured_ = false;
  SIZE baseClient_ = {};
  std::vector<LayoutRect> baseRects_;
};

}  // namespace app
