#include "app/layout/control_layout_win.h"

#include <utility>

namespace app {
namespace {

// In the dialog's client area.
LayoutRect PositionOf(HWND control, HWND dialog) {
  RECT rect;
  GetWindowRect(control, &rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
  return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace

ControlLayout::ControlLayout(std::span<const AnchoredControl> controls,
                             std::function<void(std::vector<LayoutRect>&)> adjust)
    : controls_(controls), adjust_(std::move(adjust)) {}

void ControlLayout::Capture(HWND dialog) {
  RECT client;
  GetClientRect(dialog, &client);
  baseClient_ = {client.right, client.bottom};
  baseRects_.clear();
  for (const AnchoredControl& control : controls_) {
    baseRects_.push_back(PositionOf(GetDlgItem(dialog, static_cast<int>(control.id)), dialog));
  }
  isCaptured_ = true;
}

void ControlLayout::Apply(HWND dialog) const {
  if (!isCaptured_) return;
  RECT client;
  GetClientRect(dialog, &client);
  std::vector<LayoutRect> rects = AnchorLayout(controls_, baseRects_, client.right - baseClient_.cx,
                                               client.bottom - baseClient_.cy);
  if (adjust_) adjust_(rects);
  HDWP moves = BeginDeferWindowPos(static_cast<int>(rects.size()));
  for (size_t i = 0; i < rects.size() && moves != nullptr; ++i) {
    const LayoutRect& rect = rects[i];
    const HWND control = GetDlgItem(dialog, static_cast<int>(controls_[i].id));
    // Moving a control takes time even if it stays where it is.
    if (PositionOf(control, dialog) == rect) continue;
    moves = DeferWindowPos(moves, control, nullptr, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (moves != nullptr) EndDeferWindowPos(moves);
  RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace app
