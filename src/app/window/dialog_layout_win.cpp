#include "app/window/dialog_layout_win.h"

#include "app/desktop/dpi_win.h"

namespace app {

void DialogLayout::Capture(HWND dialog) {
  RECT client;
  GetClientRect(dialog, &client);
  baseClientWidth_ = client.right;
  baseClientHeight_ = client.bottom;
  for (size_t i = 0; i < AnchoredControls.size(); ++i) {
    RECT rect;
    GetWindowRect(GetDlgItem(dialog, static_cast<int>(AnchoredControls[i].id)), &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    baseRects_[i] = {rect.left, rect.top, rect.right, rect.bottom};
  }
  isCaptured_ = true;
}

void DialogLayout::Apply(HWND dialog, bool bannerShows, int dpi) const {
  if (!isCaptured_) return;
  RECT client;
  GetClientRect(dialog, &client);
  const LayoutRects rects =
      AnchorLayout(baseRects_, client.right - baseClientWidth_, client.bottom - baseClientHeight_,
                   bannerShows, ScaleToDpi(3, dpi));
  HDWP moves = BeginDeferWindowPos(static_cast<int>(rects.size()));
  for (size_t i = 0; i < rects.size() && moves != nullptr; ++i) {
    const LayoutRect& rect = rects[i];
    moves = DeferWindowPos(moves, GetDlgItem(dialog, static_cast<int>(AnchoredControls[i].id)),
                           nullptr, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (moves != nullptr) EndDeferWindowPos(moves);
  RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace app
