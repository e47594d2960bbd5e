// The settings that the program stores between runs, in the user's real registry.
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using Bytes = std::vector<uint8_t>;

const StartOptions Kept = {.keepSettings = true};

Bytes BytesOf(const std::vector<uint32_t>& numbers) {
  Bytes bytes;
  for (const uint32_t number : numbers) {
    for (int shift = 0; shift < 32; shift += 8)
      bytes.push_back(static_cast<uint8_t>(number >> shift));
  }
  return bytes;
}

TEST(SettingsTest, AreWrittenWhenTheWindowCloses) {
  DeleteSettings();
  {
    RunningWindow window(Kept);
    EXPECT_EQ(ReadSetting(u"Algorithms"), std::nullopt);
    window.Command(ID_UPPERCASE);
    window.Command(ID_CRLF);
    window.Click(IDC_ALGO_MD5);
    window.Click(IDC_ALGO_BLAKE3);
    EXPECT_EQ(window.Close(), 0);
  }
  EXPECT_EQ(ReadNumberSetting(u"Algorithms"), 0x20Cu);  // SHA-1, SHA-256, BLAKE3
  EXPECT_EQ(ReadNumberSetting(u"Uppercase"), 1u);
  EXPECT_EQ(ReadNumberSetting(u"ShowLegacy"), 0u);
  EXPECT_EQ(ReadNumberSetting(u"IncludeHidden"), 0u);
  EXPECT_EQ(ReadNumberSetting(u"CrLf"), 1u);
  EXPECT_EQ(ReadSetting(u"Columns"), BytesOf({200, 160, 70, 90}));
  ASSERT_TRUE(ReadSetting(u"Window"));
  EXPECT_EQ(ReadSetting(u"Window")->size(), 20u);

  RunningWindow again(Kept);
  EXPECT_FALSE(again.IsChecked(IDC_ALGO_MD5));
  EXPECT_TRUE(again.IsChecked(IDC_ALGO_BLAKE3));
  const std::vector<MenuItem> options = again.Menu(2);
  EXPECT_TRUE(options[0].isChecked);
  EXPECT_FALSE(options[1].isChecked);
  EXPECT_FALSE(options[2].isChecked);
  EXPECT_TRUE(options[3].isChecked);
}

TEST(SettingsTest, OnlyTheInvalidValueFallsBack) {
  const auto widths = [](const RunningWindow& window) {
    const std::vector<int> all = window.ColumnWidths();
    return std::vector<int>{all[0], all[1], all[2], all.back()};
  };
  struct Case {
    const char* description;
    Bytes columns;
    std::vector<int> widths;
  };
  const Case cases[] = {
      {"too short", BytesOf({300, 300, 300}), {200, 160, 70, 90}},
      {"too long", BytesOf({300, 300, 300, 300, 300}), {200, 160, 70, 90}},
      {"one too narrow", BytesOf({29, 30, 100, 120}), {200, 30, 100, 120}},
      {"one too wide", BytesOf({100, 2001, 50, 2000}), {100, 160, 50, 2000}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    DeleteSettings();
    WriteSetting(u"Columns", test.columns);
    WriteSetting(u"Algorithms", u"not a number");
    WriteSetting(u"Uppercase", 5);
    const RunningWindow window(Kept);
    EXPECT_EQ(widths(window), test.widths);
    EXPECT_TRUE(window.IsChecked(IDC_ALGO_MD5));
    EXPECT_TRUE(window.IsChecked(IDC_ALGO_SHA256));
    EXPECT_FALSE(window.IsChecked(IDC_ALGO_BLAKE3));
    EXPECT_TRUE(window.Menu(2)[0].isChecked);
  }
}

TEST(SettingsTest, LegacyAlgorithmsAloneBecomeTheDefault) {
  DeleteSettings();
  WriteSetting(u"Algorithms", 0x2000);
  const RunningWindow window(Kept);
  EXPECT_EQ(window.List().ColumnHeadings(),
            (std::vector<std::u16string>{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"SHA-256",
                                         u"Status"}));
}

TEST(SettingsTest, TheWindowReopensWhereItWas) {
  Size size;
  RECT place = {};
  {
    RunningWindow window;
    window.MoveTo(120, 90);
    window.Resize({window.OuterSize().width + 80, window.OuterSize().height + 50});
    size = window.OuterSize();
    GetWindowRect(window.Handle(), &place);
    EXPECT_EQ(window.Close(), 0);
  }
  const RunningWindow again(Kept);
  RECT now = {};
  GetWindowRect(again.Handle(), &now);
  EXPECT_EQ(again.OuterSize(), size);
  EXPECT_EQ(now.left, place.left);
  EXPECT_EQ(now.top, place.top);
}

TEST(SettingsTest, AMaximizedWindowReopensMaximized) {
  {
    RunningWindow window;
    ShowWindowAsync(window.Handle(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(WaitFor([&] { return IsZoomed(window.Handle()) != FALSE; }));
    EXPECT_EQ(window.Close(), 0);
  }
  EXPECT_EQ(ReadSetting(u"Window")->at(16), 1);
  const RunningWindow again(Kept);
  EXPECT_TRUE(WaitFor([&] { return IsZoomed(again.Handle()) != FALSE; }));
}

TEST(SettingsTest, AMinimizedStartStaysMinimizedAfterAMaximizedWindow) {
  DeleteSettings();
  WriteSetting(u"Window", BytesOf({50, 50, 1500, 1500, 1}));
  const RunningWindow window({.minimized = true, .keepSettings = true});
  EXPECT_TRUE(window.IsMinimized());
}

TEST(SettingsTest, AnImpossiblePlacementIsIgnored) {
  Size usual;
  {
    const RunningWindow window;
    usual = window.OuterSize();
  }
  struct Case {
    const char* description;
    Bytes place;
  };
  const auto negative = [](int value) { return static_cast<uint32_t>(value); };
  const Case cases[] = {
      {"too narrow", BytesOf({50, 50, 150, 950, 1})},
      {"too short", BytesOf({50, 50, 1500, 150, 1})},
      {"on no screen",
       BytesOf({negative(-9000), negative(-9000), negative(-7000), negative(-7000), 1})},
      {"inside out", BytesOf({2000, 2000, 50, 50, 1})},
      {"too short a value", BytesOf({50, 50, 1500, 1500})},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    DeleteSettings();
    WriteSetting(u"Window", test.place);
    const RunningWindow window(Kept);
    EXPECT_EQ(window.OuterSize(), usual);
    EXPECT_FALSE(IsZoomed(window.Handle()));
  }
}

}  // namespace
}  // namespace app::testing
