// Column widths are stored in pixels at 96 DPI, whatever the DPI of the screen.
#include "swr/system/windows_api_win.h"

// After the system header, which it needs.
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

// The four stored numbers.
std::vector<uint32_t> StoredWidths() {
  const std::optional<std::vector<uint8_t>> bytes = ReadSetting(u"Columns");
  std::vector<uint32_t> widths;
  for (size_t i = 0; bytes && i + 3 < bytes->size(); i += 4) {
    widths.push_back((*bytes)[i] | uint32_t{(*bytes)[i + 1]} << 8 |
                     uint32_t{(*bytes)[i + 2]} << 16 | uint32_t{(*bytes)[i + 3]} << 24);
  }
  return widths;
}

// Changes the DPI of the window's screen to this value, unless it already has it.
void EnsureDpi(const RunningWindow& window, int dpi) {
  if (window.Dpi() != dpi) window.ChangeDpi(dpi, window.OuterSize());
}

void SetWidth(const RunningWindow& window, int column, int width) {
  swr::testing::AskWindow(window.Control(IDC_LIST), LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                          width);
}

TEST(ColumnWidthsTest, AtTwiceTheDpiAColumnIsStoredWithHalfItsPixels) {
  {
    RunningWindow window;
    EnsureDpi(window, 192);
    SetWidth(window, 0, 400);
    SetWidth(window, 2, 301);
    EXPECT_EQ(window.Close(), 0);
  }
  EXPECT_EQ(StoredWidths(), (std::vector<uint32_t>{200, 160, 151, 90}));
}

TEST(ColumnWidthsTest, AColumnHasItsWidthAgainAtTheNextStart) {
  int dpi = 96;
  {
    RunningWindow window;
    dpi = window.Dpi();
    EnsureDpi(window, 192);
    SetWidth(window, 1, 500);
    EXPECT_EQ(window.Close(), 0);
  }
  const RunningWindow again({.keepSettings = true});
  EXPECT_EQ(again.ColumnWidths()[1], 250 * dpi / 96);
}

// A change of algorithms rebuilds the columns.
TEST(ColumnWidthsTest, ColumnsThatAreRebuiltKeepTheirWidths) {
  RunningWindow window;
  EnsureDpi(window, 192);
  SetWidth(window, 0, 400);
  window.Click(IDC_ALGO_SHA512);
  EXPECT_EQ(window.ColumnWidths()[0], 400);
  EXPECT_EQ(window.Close(), 0);
  EXPECT_EQ(StoredWidths(), (std::vector<uint32_t>{200, 160, 70, 90}));
}

}  // namespace
}  // namespace app::testing
