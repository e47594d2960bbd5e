// How the controls follow the size of the window: pure arithmetic on rectangles, in pixels of the
// window's client area.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "resources/resource_ids.h"

namespace app {

struct LayoutRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  bool operator==(const LayoutRect&) const = default;
};

// What a control does when the window grows. An edge that is neither kept nor carried along moves
// with the opposite one.
enum Anchor : uint8_t {
  KeepLeft = 1,
  KeepTop = 2,
  FollowWidth = 4,
  FollowHeight = 8,
};

struct AnchoredControl {
  uint32_t id;
  uint8_t anchors;
};

// The controls that move. The row of algorithms is not among them; all extra height is the list's.
inline constexpr std::array<AnchoredControl, 16> AnchoredControls = {{
    {IDC_TOOLBAR, KeepLeft | KeepTop | FollowWidth},
    {IDC_TOOLBAR_RULE, KeepLeft | KeepTop | FollowWidth},
    {IDC_BANNER, KeepLeft | KeepTop | FollowWidth},
    {IDC_LIST, KeepLeft | KeepTop | FollowWidth | FollowHeight},
    {IDC_EXPECTED_LABEL, KeepLeft | FollowHeight},
    {IDC_EXPECTED, KeepLeft | FollowWidth | FollowHeight},
    {IDC_PASTE, FollowWidth | FollowHeight},
    {IDC_RESULT, KeepLeft | FollowWidth | FollowHeight},
    {IDC_DETAILS, KeepLeft | FollowWidth | FollowHeight},
    {IDC_COPY, FollowWidth | FollowHeight},
    {IDC_VIRUSTOTAL, FollowWidth | FollowHeight},
    {IDC_OPEN_FOLDER, FollowWidth | FollowHeight},
    {IDC_STATUS_TEXT, KeepLeft | FollowWidth | FollowHeight},
    {IDC_PROGRESS, FollowWidth | FollowHeight},
    {IDC_CANCEL, FollowWidth | FollowHeight},
    {IDC_LINKS, FollowWidth | FollowHeight},
}};

using LayoutRects = std::array<LayoutRect, AnchoredControls.size()>;

// Where the controls stand when the client area is `widthChange` and `heightChange` larger than it
// was with `base`. The list takes up the banner's strip while no banner shows, and starts
// `bannerGap` below the banner while one does.
LayoutRects AnchorLayout(const LayoutRects& base, int32_t widthChange, int32_t heightChange,
                         bool bannerShows, int32_t bannerGap);

}  // namespace app
