#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

// A window about to read its settings, before anything is shown.
struct NewWindow : FakeParts, WindowFlows {
  NewWindow() : WindowFlows(main) {}
};

// Consecutive 32-bit little-endian numbers, as they are stored.
std::vector<uint8_t> Bytes(const std::vector<uint32_t>& numbers) {
  std::vector<uint8_t> bytes;
  for (const uint32_t number : numbers) {
    for (const int shift : {0, 8, 16, 24}) bytes.push_back(static_cast<uint8_t>(number >> shift));
  }
  return bytes;
}

// ---- Reading.

TEST(ReadSettingsTest, AFirstRunHasTheDefaults) {
  NewWindow window;
  window.settings.Read();
  EXPECT_EQ(window.options.algorithms,
            MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Sha1) | MaskOf(AlgoId::Sha256));
  EXPECT_FALSE(window.options.uppercase);
  EXPECT_FALSE(window.options.showLegacy);
  EXPECT_FALSE(window.options.includeHidden);
  EXPECT_FALSE(window.options.crLf);
  EXPECT_EQ(window.columns.Widths()[0], 200u);
  EXPECT_EQ(window.columns.Widths()[1], 160u);
  EXPECT_EQ(window.columns.Widths()[2], 70u);
  EXPECT_EQ(window.columns.Widths()[3], 90u);
  EXPECT_FALSE(window.settings.RestorePlacement());
  EXPECT_FALSE(window.view.triedPlacement);
}

struct AlgorithmsCase {
  const char* description;
  std::optional<uint32_t> saved;
  uint32_t showLegacy;
  AlgoMask algorithms;
};

TEST(ReadSettingsTest, Algorithms) {
  const AlgorithmsCase cases[] = {
      {"missing", std::nullopt, 0, 14},
      {"none", 0, 0, 14},
      {"SHA-256", 8, 0, 8},
      {"all algorithms that are shown", 0x1FFF, 0, 0x1FFF},
      {"only unknown bits", 0x8000, 0, 14},
      {"only unknown bits, with legacy algorithms shown", 0x8000, 1, 14},
      {"one known bit among unknown ones", 0xFFFF8001, 0, 1},
      {"all bits", 0xFFFFFFFF, 1, 0x7FFF},
      {"legacy algorithms, not shown", 0x7FFF, 0, 0x1FFF},
      {"only MD2, not shown", 0x2000, 0, 14},
      {"only the legacy algorithms, not shown", 0x6000, 0, 14},
      {"only MD2, shown", 0x2000, 1, 0x2000},
  };
  for (const AlgorithmsCase& test : cases) {
    SCOPED_TRACE(test.description);
    NewWindow window;
    if (test.saved) window.desktop.dwordSettings[u"Algorithms"] = *test.saved;
    window.desktop.dwordSettings[u"ShowLegacy"] = test.showLegacy;
    window.settings.Read();
    EXPECT_EQ(window.options.algorithms, test.algorithms);
    window.main.Start();
    EXPECT_EQ(window.view.shownMask, test.algorithms);
  }
}

TEST(ReadSettingsTest, FlagsAreIndependent) {
  struct Case {
    std::u16string name;
    bool Options::*flag;
    bool OptionChecks::*shown;
  };
  const Case cases[] = {
      {u"Uppercase", &Options::uppercase, &OptionChecks::uppercase},
      {u"ShowLegacy", &Options::showLegacy, &OptionChecks::showLegacy},
      {u"IncludeHidden", &Options::includeHidden, &OptionChecks::includeHidden},
      {u"CrLf", &Options::crLf, &OptionChecks::crLf},
  };
  for (const Case& test : cases) {
    for (const uint32_t value : {0U, 1U, 2U, 0x80000000U}) {
      SCOPED_TRACE(swr::WideToUtf8(test.name) + " " + std::to_string(value));
      NewWindow window;
      window.desktop.dwordSettings[test.name] = value;
      window.settings.Read();
      window.main.Start();
      for (const Case& other : cases) {
        const bool expected = other.flag == test.flag && value != 0;
        EXPECT_EQ(window.options.*other.flag, expected);
        EXPECT_EQ(window.view.options.*other.shown, expected);
      }
    }
  }
}

struct ColumnsCase {
  const char* description;
  std::vector<uint8_t> saved;
  std::vector<uint32_t> widths;
};

TEST(ReadSettingsTest, ColumnWidths) {
  const ColumnsCase cases[] = {
      {"in order", Bytes({301, 302, 303, 304}), {301, 302, 303, 304}},
      {"the narrowest and the widest", Bytes({30, 2000, 30, 2000}), {30, 2000, 30, 2000}},
      {"one too narrow", Bytes({29, 100, 101, 102}), {200, 100, 101, 102}},
      {"one too wide", Bytes({100, 2001, 101, 102}), {100, 160, 101, 102}},
      {"zero and a very large width", Bytes({100, 101, 0, 0xFFFFFFFF}), {100, 101, 70, 90}},
      {"little-endian byte order", Bytes({0x0102, 0x0203, 0x0304, 0x0405}), {258, 515, 772, 1029}},
      {"all invalid", Bytes({0, 1, 2, 3}), {200, 160, 70, 90}},
      {"too short", Bytes({300, 300, 300}), {200, 160, 70, 90}},
      {"too long", Bytes({300, 300, 300, 300, 300}), {200, 160, 70, 90}},
      {"a byte short", std::vector<uint8_t>(15, 100), {200, 160, 70, 90}},
      {"nothing", {}, {200, 160, 70, 90}},
  };
  for (const ColumnsCase& test : cases) {
    SCOPED_TRACE(test.description);
    NewWindow window;
    window.desktop.binarySettings[u"Columns"] = test.saved;
    window.settings.Read();
    window.main.Start();
    ASSERT_EQ(window.view.columns.size(), 7u);
    EXPECT_EQ((std::vector<uint32_t>{window.view.columns[0].width, window.view.columns[1].width,
                                     window.view.columns[2].width, window.view.columns[6].width}),
              test.widths);
    EXPECT_EQ(window.view.columns[3].width, 240u) << "of a digest column";
  }
}

struct WindowCase {
  const char* description;
  std::vector<uint8_t> saved;
  std::optional<WindowPlacement> tried;
  bool accepts = true;
  bool maximized;
};

TEST(RestorePlacementTest, Table) {
  const uint32_t minusFive = static_cast<uint32_t>(-5);
  const WindowCase cases[] = {
      {"normal", Bytes({10, 20, 810, 620, 0}),
       WindowPlacement{.left = 10, .top = 20, .right = 810, .bottom = 620, .maximized = false},
       true, false},
      {"maximized", Bytes({10, 20, 810, 620, 1}),
       WindowPlacement{.left = 10, .top = 20, .right = 810, .bottom = 620, .maximized = true}, true,
       true},
      {"on a screen to the left", Bytes({minusFive, minusFive, 810, 620, 0}),
       WindowPlacement{.left = -5, .top = -5, .right = 810, .bottom = 620, .maximized = false},
       true, false},
      {"on no screen", Bytes({90000, 90000, 91000, 91000, 1}),
       WindowPlacement{
           .left = 90000, .top = 90000, .right = 91000, .bottom = 91000, .maximized = true},
       false, false},
      {"too short", Bytes({10, 20, 810, 620}), std::nullopt, true, false},
      {"too long", Bytes({10, 20, 810, 620, 1, 0}), std::nullopt, true, false},
      {"nothing", {}, std::nullopt, true, false},
  };
  for (const WindowCase& test : cases) {
    SCOPED_TRACE(test.description);
    NewWindow window;
    window.desktop.binarySettings[u"Window"] = test.saved;
    window.view.acceptsPlacement = test.accepts;
    window.settings.Read();
    window.main.Start();
    EXPECT_FALSE(window.view.triedPlacement) << "the window is moved only by RestorePlacement";
    EXPECT_EQ(window.settings.RestorePlacement(), test.maximized);
    EXPECT_EQ(window.view.triedPlacement, test.tried);
  }
}

// Only the invalid value falls back to its default.
TEST(ReadSettingsTest, ABadValueDoesNotAffectOthers) {
  const std::map<std::u16string, uint32_t> flags = {{u"Algorithms", 1},
                                                    {u"Uppercase", 1},
                                                    {u"ShowLegacy", 1},
                                                    {u"IncludeHidden", 1},
                                                    {u"CrLf", 1}};
  for (const char16_t* bad :
       {u"Algorithms", u"Uppercase", u"ShowLegacy", u"IncludeHidden", u"CrLf", u"Columns"}) {
    const std::u16string name = bad;
    SCOPED_TRACE(swr::WideToUtf8(name));
    NewWindow window;
    window.desktop.dwordSettings = flags;
    window.desktop.dwordSettings.erase(name);
    window.desktop.binarySettings[u"Columns"] =
        name == u"Columns" ? Bytes({1}) : Bytes({101, 102, 103, 104});
    window.settings.Read();
    EXPECT_EQ(window.options.algorithms, name == u"Algorithms" ? 14u : 1u);
    EXPECT_EQ(window.options.uppercase, name != u"Uppercase");
    EXPECT_EQ(window.options.showLegacy, name != u"ShowLegacy");
    EXPECT_EQ(window.options.includeHidden, name != u"IncludeHidden");
    EXPECT_EQ(window.options.crLf, name != u"CrLf");
    EXPECT_EQ(window.columns.Widths()[0], name == u"Columns" ? 200u : 101u);
    EXPECT_EQ(window.columns.Widths()[3], name == u"Columns" ? 90u : 104u);
  }
}

// ---- Writing.

TEST(WriteSettingsTest, EveryValue) {
  FakeWindow window;
  window.algorithms.Select(MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Blake3) | MaskOf(AlgoId::Xxh128));
  window.commands.Run(ID_UPPERCASE);
  window.commands.Run(ID_INCLUDE_HIDDEN);
  // As if dragged by the user. The widths of digest columns are not kept.
  const std::vector<uint32_t> widths = {0x0102, 0x0203, 0x0304, 999, 998, 997, 0x0405};
  ASSERT_EQ(window.view.columns.size(), widths.size());
  for (size_t i = 0; i < widths.size(); ++i) window.view.columns[i].width = widths[i];
  window.view.placement =
      WindowPlacement{.left = -2, .top = 3, .right = 0x010203, .bottom = 700, .maximized = true};

  window.settings.Write();
  EXPECT_EQ(window.desktop.dwordSettings,
            (std::map<std::u16string, uint32_t>{{u"Algorithms", 0x1201},
                                                {u"Uppercase", 1},
                                                {u"ShowLegacy", 0},
                                                {u"IncludeHidden", 1},
                                                {u"CrLf", 0}}));
  EXPECT_EQ(window.desktop.binarySettings[u"Columns"],
            (std::vector<uint8_t>{2, 1, 0, 0, 3, 2, 0, 0, 4, 3, 0, 0, 5, 4, 0, 0}));
  EXPECT_EQ(window.desktop.binarySettings[u"Window"],
            (std::vector<uint8_t>{0xFE, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0, 3, 2,
                                  1,    0,    0xBC, 2,    0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(window.desktop.settingsWritten,
            (std::vector<std::u16string>{u"Algorithms", u"Uppercase", u"ShowLegacy",
                                         u"IncludeHidden", u"CrLf", u"Columns", u"Window"}));
}

TEST(WriteSettingsTest, AWindowThatIsNotMaximizedAndTheOtherFlags) {
  FakeWindow window;
  window.commands.Run(ID_SHOW_LEGACY);
  window.commands.Run(ID_CRLF);
  window.view.placement = WindowPlacement{.left = 1, .top = 2, .right = 3, .bottom = 4};
  window.settings.Write();
  EXPECT_EQ(window.desktop.dwordSettings, (std::map<std::u16string, uint32_t>{{u"Algorithms", 14},
                                                                              {u"Uppercase", 0},
                                                                              {u"ShowLegacy", 1},
                                                                              {u"IncludeHidden", 0},
                                                                              {u"CrLf", 1}}));
  EXPECT_EQ(window.desktop.binarySettings[u"Columns"], Bytes({200, 160, 70, 90}));
  EXPECT_EQ(window.desktop.binarySettings[u"Window"], Bytes({1, 2, 3, 4, 0}));
}

TEST(WriteSettingsTest, AnUnknownPlacementKeepsTheOldOne) {
  FakeWindow window;
  window.desktop.binarySettings[u"Window"] = {1, 2, 3};
  window.settings.Write();
  EXPECT_EQ(window.desktop.binarySettings[u"Window"], (std::vector<uint8_t>{1, 2, 3}));
}

TEST(WriteSettingsTest, NothingIsWrittenBeforeTheWindowCloses) {
  FakeWindow window;
  window.commands.Run(ID_CRLF);
  window.algorithms.Select(1);
  window.edits.Clear();
  EXPECT_TRUE(window.desktop.settingsWritten.empty());
}

TEST(SettingsTest, TheNextWindowReopensAsThisOneWasClosed) {
  FakeWindow first;
  first.commands.Run(ID_SHOW_LEGACY);
  first.commands.Run(ID_CRLF);
  first.algorithms.Select(MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Sha512));
  first.view.columns[0].width = 333;
  first.view.placement =
      WindowPlacement{.left = -100, .top = 7, .right = 900, .bottom = 800, .maximized = true};
  first.settings.Write();

  NewWindow next;
  next.desktop.dwordSettings = first.desktop.dwordSettings;
  next.desktop.binarySettings = first.desktop.binarySettings;
  next.settings.Read();
  next.main.Start();
  EXPECT_TRUE(next.settings.RestorePlacement());
  EXPECT_EQ(next.view.shownMask, MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Sha512));
  EXPECT_TRUE(next.view.options.showLegacy);
  EXPECT_TRUE(next.view.options.crLf);
  EXPECT_FALSE(next.view.options.uppercase);
  EXPECT_EQ(next.view.columns[0].width, 333u);
  EXPECT_EQ(next.view.triedPlacement, first.view.placement);
}

}  // namespace
}  // namespace app::testing
