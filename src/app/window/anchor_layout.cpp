#include "app/window/anchor_layout.h"

namespace app {

LayoutRects AnchorLayout(const LayoutRects& base, int32_t widthChange, int32_t heightChange,
                         bool bannerShows, int32_t bannerGap) {
  LayoutRects rects = base;
  LayoutRect banner;
  for (std::size_t i = 0; i < rects.size(); ++i) {
    const auto [id, anchors] = AnchoredControls[i];
    LayoutRect& rect = rects[i];
    if ((anchors & FollowWidth) != 0) {
      rect.right += widthChange;
      if ((anchors & KeepLeft) == 0) rect.left += widthChange;
    }
    if ((anchors & FollowHeight) != 0) {
      rect.bottom += heightChange;
      if ((anchors & KeepTop) == 0) rect.top += heightChange;
    }
    if (id == IDC_BANNER) banner = rect;
    if (id == IDC_LIST) rect.top = bannerShows ? banner.bottom + bannerGap : banner.top;
  }
  return rects;
}

}  // namespace app
