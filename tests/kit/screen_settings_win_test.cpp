// Turns on high contrast and changes the scaling of the screen, and restores both. (If the tests
// are ended before that, the kit restores them.)
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/kit/display_settings_win.h"
#include "tests/kit/window_picture_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::seconds;
using swr::testing::TempTree;

// A change of theme takes the system a few seconds, and repaints everything.
constexpr DWORD ThemeTime = 6000;

class HighContrastTest : public ::testing::Test {
 protected:
  HighContrastTest() : before_(kit::ReadHighContrast()) {}
  ~HighContrastTest() override {
    if (isChanged_) {
      kit::SetHighContrast(*before_);
      Sleep(ThemeTime);
    }
  }
  // False when it can't be turned on here.
  bool TurnOn() {
    if (!before_ || before_->IsOn()) return before_.has_value();
    isChanged_ = kit::SetHighContrast(
        {.flags = before_->flags | HCF_HIGHCONTRASTON, .scheme = before_->scheme});
    const auto isOn = [] {
      const auto now = kit::ReadHighContrast();
      return now && now->IsOn();
    };
    return isChanged_ && WaitFor(isOn, seconds(15));
  }

  std::optional<kit::HighContrastSetting> before_;
  bool isChanged_ = false;
};

TEST_F(HighContrastTest, RowsLoseTheirColours) {
  TempTree tree;
  tree.AddFile(u"good.bin", DigestsOfAbc.input);
  tree.AddFile(u"bad.bin", DigestsOfAbc.input);
  const auto line = [](std::u16string_view digest, const char* name) {
    return swr::WideToUtf8(digest) + "  " + name + "\n";
  };
  const std::u16string list =
      tree.AddFile(u"SHA256SUMS",
                   line(DigestsOfAbc.sha256, "good.bin") + line(DigestsOfDigits.sha256, "bad.bin"));
  const RunningWindow window;
  window.Drop({list});
  window.FollowBannerLink(u"a");
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == 2; }));
  window.WaitUntilIdle();
  // Turned on while the window is open, as users do.
  if (!TurnOn()) GTEST_SKIP() << "high contrast can't be turned on here";
  Sleep(ThemeTime);
  window.BringToFront();
  window.SelectOnly({});
  TakePicture(window, u"20 high contrast");
  const COLORREF plain = GetSysColor(COLOR_WINDOW);
  const auto expected =
      static_cast<uint32_t>(GetRValue(plain) << 16 | GetGValue(plain) << 8 | GetBValue(plain));
  for (const int row : {0, 1}) {
    EXPECT_TRUE(WaitFor([&] { return window.RowBackground(row) == expected; }, seconds(5)))
        << std::hex << window.RowBackground(row) << " instead of " << expected;
  }
}

class ScreenScalingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    before_ = kit::ReadScreenScaling();
    if (!before_) GTEST_SKIP() << "the scaling of the screen can't be changed here";
  }
  void TearDown() override {
    if (before_) kit::SetScreenScaling(*before_);
  }
  int Other() const { return *before_ == 150 ? 100 : 150; }

  std::optional<int> before_;
};

std::vector<int> AllControls() {
  return {IDC_ALGO_MD5,  IDC_ALGO_SHA1,  IDC_ALGO_SHA256, IDC_ALGO_SHA512, IDC_ALGO_BLAKE3,
          IDC_ALGO_MORE, IDC_LIST,       IDC_EXPECTED,    IDC_PASTE,       IDC_DETAILS,
          IDC_COPY,      IDC_VIRUSTOTAL, IDC_OPEN_FOLDER};
}

void ExpectEverythingHasRoom(const RunningWindow& window) {
  const Size client = window.ClientSize();
  for (const int control : AllControls()) {
    const Rect place = window.Place(control);
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.width &&
                place.bottom <= client.height)
        << control << " at " << place << " in " << client;
    if (window.ClassOf(control) != u"Button") continue;
    EXPECT_GE(place.Width(), window.IdealSize(control).width) << control;
  }
}

TEST_F(ScreenScalingTest, AnOpenWindowFollows) {
  const RunningWindow window;
  window.MoveTo(10, 10);
  const std::vector<int> widths = window.ColumnWidths();
  if (!kit::SetScreenScaling(Other())) {
    GTEST_SKIP() << "this screen can't have " << Other() << "%";
  }
  const int wanted = widths[0] * Other() / *before_;
  EXPECT_TRUE(
      WaitFor([&] { return std::abs(window.ColumnWidths()[0] - wanted) <= 1; }, seconds(15)))
      << window.ColumnWidths()[0] << " instead of " << wanted;
  window.WaitForPostedMessages();
  ExpectEverythingHasRoom(window);
  TakePicture(window, u"21 open while the scaling changed to " +
                          std::u16string(Other() == 150 ? u"150" : u"100"));
}

TEST_F(ScreenScalingTest, ANewWindowHasTheNewScaling) {
  if (!kit::SetScreenScaling(Other())) {
    GTEST_SKIP() << "this screen can't have " << Other() << "%";
  }
  Sleep(2000);
  const RunningWindow window;
  ExpectEverythingHasRoom(window);
  TakePicture(window, u"22 opened at " + std::u16string(Other() == 150 ? u"150" : u"100"));
}

}  // namespace
}  // namespace app::testing
