// How the controls follow the size of the window, and its move to a screen with a different DPI.
#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

// What share of the added size moves each edge.
struct Follows {
  int id;
  int left, top, right, bottom;
};

const std::vector<Follows> controls = {
    {IDC_TOOLBAR, 0, 0, 1, 0},     {IDC_TOOLBAR_RULE, 0, 0, 1, 0}, {IDC_ALGO_LABEL, 0, 0, 0, 0},
    {IDC_ALGO_MD5, 0, 0, 0, 0},    {IDC_ALGO_SHA1, 0, 0, 0, 0},    {IDC_ALGO_SHA256, 0, 0, 0, 0},
    {IDC_ALGO_SHA512, 0, 0, 0, 0}, {IDC_ALGO_BLAKE3, 0, 0, 0, 0},  {IDC_ALGO_MORE, 0, 0, 0, 0},
    {IDC_BANNER, 0, 0, 1, 0},      {IDC_LIST, 0, 0, 1, 1},         {IDC_EXPECTED_LABEL, 0, 1, 0, 1},
    {IDC_EXPECTED, 0, 1, 1, 1},    {IDC_PASTE, 1, 1, 1, 1},        {IDC_RESULT, 0, 1, 1, 1},
    {IDC_DETAILS, 0, 1, 1, 1},     {IDC_COPY, 1, 1, 1, 1},         {IDC_VIRUSTOTAL, 1, 1, 1, 1},
    {IDC_OPEN_FOLDER, 1, 1, 1, 1}, {IDC_STATUS_TEXT, 0, 1, 1, 1},  {IDC_PROGRESS, 1, 1, 1, 1},
    {IDC_CANCEL, 1, 1, 1, 1},      {IDC_LINKS, 1, 1, 1, 1},
};

std::map<int, Rect> Places(const RunningWindow& window) {
  std::map<int, Rect> places;
  for (const Follows& control : controls) places[control.id] = window.Place(control.id);
  return places;
}

void ExpectPlaces(const RunningWindow& window, const std::map<int, Rect>& base, Size growth) {
  for (const Follows& control : controls) {
    Rect expected = base.at(control.id);
    expected.left += control.left * growth.width;
    expected.top += control.top * growth.height;
    expected.right += control.right * growth.width;
    expected.bottom += control.bottom * growth.height;
    EXPECT_EQ(window.Place(control.id), expected) << control.id << " after growth by " << growth;
  }
}

TEST(LayoutTest, ControlsFollowTheSizeOfTheWindow) {
  const RunningWindow window;
  const Size outer = window.OuterSize();
  const Size client = window.ClientSize();
  const std::map<int, Rect> base = Places(window);
  for (const Size growth : {Size{120, 0}, Size{0, 90}, Size{201, 77}, Size{1, 1}, Size{0, 0}}) {
    window.Resize({outer.width + growth.width, outer.height + growth.height});
    EXPECT_EQ(window.ClientSize(),
              (Size{client.width + growth.width, client.height + growth.height}));
    ExpectPlaces(window, base, growth);
  }
}

TEST(LayoutTest, TheWindowIsNeverSmallerThanItWasDesigned) {
  const RunningWindow window;
  const Size designed = window.OuterSize();
  const std::map<int, Rect> base = Places(window);
  for (const Size wanted : {Size{10, 10}, Size{designed.width - 1, designed.height - 1}}) {
    window.Resize(wanted);
    EXPECT_EQ(window.OuterSize(), designed);
  }
  window.Resize({100, designed.height + 50});
  EXPECT_EQ(window.OuterSize(), (Size{designed.width, designed.height + 50}));
  ExpectPlaces(window, base, {0, 50});
}

// Half a pixel is rounded up.
int Scaled(int value, int dpi, int oldDpi) { return (value * dpi + oldDpi / 2) / oldDpi; }

// A window can't be larger than the desktop.
bool ScreenHasRoomFor(const Size& size) {
  return size.width <= GetSystemMetrics(SM_CXMAXTRACK) &&
         size.height <= GetSystemMetrics(SM_CYMAXTRACK);
}

TEST(LayoutTest, AnotherDpiScalesColumnsAndTheSmallestSize) {
  const RunningWindow window;
  const int oldDpi = window.Dpi();
  const int newDpi = oldDpi * 3 / 2;
  const Size designed = window.OuterSize();
  const std::vector<int> widths = window.ColumnWidths();
  const Size smallest = {Scaled(designed.width, newDpi, oldDpi),
                         Scaled(designed.height, newDpi, oldDpi)};
  if (!ScreenHasRoomFor({smallest.width + 40, smallest.height + 30})) {
    GTEST_SKIP() << "the screen is too small for " << smallest;
  }
  window.ChangeDpi(newDpi, smallest);
  std::vector<int> scaledWidths;
  for (const int width : widths) scaledWidths.push_back(Scaled(width, newDpi, oldDpi));
  EXPECT_EQ(window.ColumnWidths(), scaledWidths);
  window.Resize({10, 10});
  EXPECT_EQ(window.OuterSize(), smallest);

  // Afterwards the controls follow as before.
  const std::map<int, Rect> base = Places(window);
  window.Resize({smallest.width + 40, smallest.height + 30});
  ExpectPlaces(window, base, {40, 30});

  // And back again.
  window.ChangeDpi(oldDpi, designed);
  for (size_t i = 0; i < widths.size(); ++i) {
    EXPECT_NEAR(window.ColumnWidths()[i], widths[i], 1) << i;
  }
  window.Resize({10, 10});
  EXPECT_NEAR(window.OuterSize().width, designed.width, 1);
  EXPECT_NEAR(window.OuterSize().height, designed.height, 1);
}

TEST(LayoutTest, ColumnsOfALaterAlgorithmHaveTheSizeOfTheNewDpi) {
  const RunningWindow window;
  window.ChangeDpi(window.Dpi() * 2, window.OuterSize());
  window.Click(IDC_ALGO_SHA512);
  EXPECT_EQ(window.ColumnWidths()[6], 2 * 260 * window.Dpi() / 96);
  EXPECT_EQ(window.ColumnWidths()[0], 2 * 200 * window.Dpi() / 96);
}

}  // namespace
}  // namespace app::testing
