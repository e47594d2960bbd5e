// The layout of the main dialog: which of its controls move, and the strip of the banner.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "app/layout/anchor_layout.h"
#include "resources/resource_ids.h"

namespace app {

// What the edges left, top, right and bottom of a control follow.
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

// The controls that move. The row of algorithms is not among them; all added height goes to the
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

// Moves the top of the list, among the rectangles of these controls: the list takes up the strip of
// the banner while none shows, and starts `bannerGap` below the banner while one does.
void PlaceListUnderBanner(std::vector<LayoutRect>& rects, bool bannerShows, int32_t bannerGap);

}  // namespace app
