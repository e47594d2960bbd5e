#include "app/window/main_layout.h"

#include <algorithm>
#include <cstddef>

namespace app {

void PlaceListUnderBanner(std::vector<LayoutRect>& rects, bool bannerShows, int32_t bannerGap) {
  const auto rectOf = [&](uint32_t id) -> LayoutRect& {
    const auto control = std::ranges::find(MainDialogControls, id, &AnchoredControl::id);
    return rects[static_cast<size_t>(control - MainDialogControls.begin())];
  };
  const LayoutRect& banner = rectOf(IDC_BANNER);
  rectOf(IDC_LIST).top = bannerShows ? banner.bottom + bannerGap : banner.top;
}

}  // namespace app
