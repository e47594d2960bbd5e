#include "app/layout/anchor_layout.h"

#include <cstddef>

namespace app {
namespace {

int32_t PartOf(int32_t change, Follow follow) {
  switch (follow) {
    case Follow::All:
      return change;
    case Follow::Half:
      return change / 2;
    case Follow::Nothing:
      break;
  }
  return 0;
}

}  // namespace

std::vector<LayoutRect> AnchorLayout(std::span<const AnchoredControl> controls,
                                     std::span<const LayoutRect> base, int32_t widthChange,
                                     int32_t heightChange) {
  std::vector<LayoutRect> rects(base.begin(), base.end());
  for (size_t i = 0; i < rects.size(); ++i) {
    rects[i].left += PartOf(widthChange, controls[i].left);
    rects[i].top += PartOf(heightChange, controls[i].top);
    rects[i].right += PartOf(widthChange, controls[i].right);
    rects[i].bottom += PartOf(heightChange, controls[i].bottom);
  }
  return rects;
}

}  // namespace app
