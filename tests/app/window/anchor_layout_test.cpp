#include "app/window/anchor_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace app {

std::ostream& operator<<(std::ostream& out, const LayoutRect& rect) {
  return out << rect.left << ',' << rect.top << ',' << rect.right << ',' << rect.bottom;
}

namespace {

constexpr LayoutRect BannerRect = {7, 40, 450, 50};

LayoutRects Base() {
  LayoutRects rects;
  rects.fill({10, 100, 30, 120});
  for (size_t i = 0; i < rects.size(); ++i) {
    if (AnchoredControls[i].id == IDC_BANNER) rects[i] = BannerRect;
  }
  return rects;
}

LayoutRect RectOf(const LayoutRects& rects, uint32_t id) {
  const auto found = std::ranges::find(AnchoredControls, id, &AnchoredControl::id);
  return rects[static_cast<size_t>(found - AnchoredControls.begin())];
}

struct AnchorCase {
  uint32_t id;
  LayoutRect grown;  // after 5 more in width and 3 more in height
};

TEST(AnchorLayoutTest, EachControl) {
  const LayoutRect acrossTop = {10, 100, 35, 120};
  const LayoutRect corner = {15, 103, 35, 123};
  const LayoutRect acrossBottom = {10, 103, 35, 123};
  const AnchorCase cases[] = {
      {IDC_TOOLBAR, acrossTop},
      {IDC_TOOLBAR_RULE, acrossTop},
      {IDC_BANNER, {7, 40, 455, 50}},
      {IDC_LIST, {10, 40, 35, 123}},
      {IDC_EXPECTED_LABEL, {10, 103, 30, 123}},
      {IDC_EXPECTED, acrossBottom},
      {IDC_PASTE, corner},
      {IDC_RESULT, acrossBottom},
      {IDC_DETAILS, acrossBottom},
      {IDC_COPY, corner},
      {IDC_VIRUSTOTAL, corner},
      {IDC_OPEN_FOLDER, corner},
      {IDC_STATUS_TEXT, acrossBottom},
      {IDC_PROGRESS, corner},
      {IDC_CANCEL, corner},
      {IDC_LINKS, corner},
  };
  const LayoutRects grown = AnchorLayout(Base(), 5, 3, false, 3);
  for (const AnchorCase& test : cases) EXPECT_EQ(RectOf(grown, test.id), test.grown) << test.id;
  EXPECT_EQ(std::size(cases), AnchoredControls.size());
}

TEST(AnchorLayoutTest, TheListMakesRoomForABanner) {
  EXPECT_EQ(RectOf(AnchorLayout(Base(), 0, 0, false, 3), IDC_LIST).top, BannerRect.top);
  EXPECT_EQ(RectOf(AnchorLayout(Base(), 0, 0, true, 3), IDC_LIST).top, BannerRect.bottom + 3);
  EXPECT_EQ(RectOf(AnchorLayout(Base(), 0, 0, true, 6), IDC_LIST).top, BannerRect.bottom + 6);
}

TEST(AnchorLayoutTest, SameSizeMovesNothingElse) {
  const LayoutRects base = Base();
  const LayoutRects same = AnchorLayout(base, 0, 0, false, 3);
  for (size_t i = 0; i < base.size(); ++i) {
    if (AnchoredControls[i].id != IDC_LIST) {
      EXPECT_EQ(same[i], base[i]);
    }
  }
}

}  // namespace
}  // namespace app
