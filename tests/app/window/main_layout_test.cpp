#include "app/window/main_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <vector>

namespace app {

std::ostream& operator<<(std::ostream& out, const LayoutRect& rect) {
  return out << rect.left << ',' << rect.top << ',' << rect.right << ',' << rect.bottom;
}

namespace {

constexpr LayoutRect BannerRect = {7, 40, 450, 50};

std::vector<LayoutRect> Base() {
  std::vector<LayoutRect> rects(MainDialogControls.size(), {10, 100, 30, 120});
  for (size_t i = 0; i < rects.size(); ++i) {
    if (MainDialogControls[i].id == IDC_BANNER) rects[i] = BannerRect;
  }
  return rects;
}

LayoutRect RectOf(const std::vector<LayoutRect>& rects, uint32_t id) {
  const auto found = std::ranges::find(MainDialogControls, id, &AnchoredControl::id);
  return rects[static_cast<size_t>(found - MainDialogControls.begin())];
}

std::vector<LayoutRect> MainLayout(int32_t widthChange, int32_t heightChange, bool bannerShows,
                                   int32_t bannerGap) {
  std::vector<LayoutRect> rects =
      AnchorLayout(MainDialogControls, Base(), widthChange, heightChange);
  PlaceListUnderBanner(rects, bannerShows, bannerGap);
  return rects;
}

struct AnchorCase {
  uint32_t id;
  LayoutRect grown;  // after 5 more in width and 3 more in height
};

TEST(MainLayoutTest, EachControl) {
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
  const std::vector<LayoutRect> grown = MainLayout(5, 3, false, 3);
  for (const AnchorCase& test : cases) EXPECT_EQ(RectOf(grown, test.id), test.grown) << test.id;
  EXPECT_EQ(std::size(cases), MainDialogControls.size());
}

TEST(MainLayoutTest, TheListMakesRoomForABanner) {
  EXPECT_EQ(RectOf(MainLayout(0, 0, false, 3), IDC_LIST).top, BannerRect.top);
  EXPECT_EQ(RectOf(MainLayout(0, 0, true, 3), IDC_LIST).top, BannerRect.bottom + 3);
  EXPECT_EQ(RectOf(MainLayout(0, 0, true, 6), IDC_LIST).top, BannerRect.bottom + 6);
}

TEST(MainLayoutTest, TheSameSizeMovesNothingElse) {
  const std::vector<LayoutRect> base = Base();
  const std::vector<LayoutRect> same = MainLayout(0, 0, false, 3);
  for (size_t i = 0; i < base.size(); ++i) {
    if (MainDialogControls[i].id != IDC_LIST) {
      EXPECT_EQ(same[i], base[i]);
    }
  }
}

}  // namespace
}  // namespace app
