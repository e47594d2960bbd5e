// The layout of the main dialog: which controls move, and the space for the banner.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "app/layout/anchor_layout.h"
#include "resources/resource_ids.h"

namespace app {

// What the left, top, right and bottom edge of a control follow.
constexpr AnchoredControl GrowsWide(uint32_t id) {
  return {id, Follow::Nothing, Follow::Nothing, Follow::All, Follow::Nothing};
}
constexpr AnchoredControl Grows(uint32_t id) {
  return {id, Follow::Nothing, Follow::Nothing, Follow::All, Follow::All};
}
constexpr AnchoredControl MovesDown(uint32_t id) {
  return {id, Follow::Nothing, Follow::All, Follow::Nothing, Follow::All};
}
constexpr AnchoredControl MovesDownAndGrowsWide(uint32_t id) {
  return {id, Follow::Nothing, Follow::All, Follow::All, Follow::All};
}
constexpr AnchoredControl MovesWithCorner(uint32_t id) {
  return {id, Follow::All, Follow::All, Follow::All, Follow::All};
}

// The controls that move. The row of algorithms stays where it is, and all added height goes to the
// list.
inline constexpr std::array<AnchoredControl, 16> MainDialogControls = {{
    GrowsWide(IDC_TOOLBAR),
    GrowsWide(IDC_TOOLBAR_RULE),
    GrowsWide(IDC_BANNER),
    Grows(IDC_LIST),
    MovesDown(IDC_EXPECTED_LABEL),
    MovesDownAndGrowsWide(IDC_EXPECTED),
    MovesWithCorner(IDC_PASTE),
    MovesDownAndGrowsWide(IDC_RESULT),
    MovesDownAndGrowsWide(IDC_DETAILS),
    MovesWithCorner(IDC_COPY),
    MovesWithCorner(IDC_VIRUSTOTAL),
    MovesWithCorner(IDC_OPEN_FOLDER),
    MovesDownAndGrowsWide(IDC_STATUS_TEXT),
    MovesWithCorner(IDC_PROGRESS),
    MovesWithCorner(IDC_CANCEL),
    MovesWithCorner(IDC_LINKS),
}};

// Sets the top of the list in the rectangles of these controls: while no banner is shown, the list
// covers the banner's space; otherwise it starts `bannerGap` below the banner.
void PlaceListUnderBanner(std::vector<LayoutRect>& rects, bool bannerShows, int32_t bannerGap);

}  // namespace app
