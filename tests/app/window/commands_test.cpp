#include <gtest/gtest.h>

#include <string>

#include "app/window/algo_boxes.h"
#include "app/window/algo_menu.h"
#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

constexpr AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

TEST(CommandsTest, PickersLeadToTheListAndCancelLeavesItAlone) {
  struct Case {
    uint32_t id;
    std::u16string title;
  };
  for (const Case& test : {Case{ID_ADD_FILES, u"Add Files"}, Case{ID_ADD_FOLDER, u"Add Folder"}}) {
    SCOPED_TRACE(swr::WideToUtf8(test.title));
    FakeWindow window;
    window.main.OnCommand(test.id);
    EXPECT_EQ(window.desktop.pickerTitle, test.title);
    EXPECT_EQ(window.desktop.waits, 0);
    window.desktop.picked = {u"no such file"};
    window.main.OnCommand(test.id);
    EXPECT_EQ(window.main.rows.size(), 1u);
  }
}

TEST(CommandsTest, ExitClosesTheWindow) {
  FakeWindow window;
  window.main.OnCommand(ID_EXIT);
  EXPECT_TRUE(window.desktop.closed);
}

TEST(CommandsTest, RemoveTakesTheSelectionAway) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.view.selected = {1};
  window.main.OnCommand(ID_REMOVE);
  ASSERT_EQ(window.main.rows.size(), 1u);
  EXPECT_EQ(window.main.rows[0]->path, u"a");
}

TEST(CommandsTest, SelectAllThenRemoveEmptiesTheList) {
  FakeWindow window;
  window.AddRow(u"a");
  window.AddRow(u"b");
  window.main.OnCommand(ID_SELECT_ALL);
  window.main.OnCommand(ID_REMOVE);
  EXPECT_TRUE(window.main.rows.empty());
}

TEST(CommandsTest, CancelAndClearReachTheWorker) {
  FakeWindow window;
  window.AddRow(u"a");
  window.main.OnCommand(IDC_CANCEL);
  EXPECT_EQ(window.queue.cancels, 1);
  EXPECT_EQ(window.main.rows.size(), 1u);
  window.main.OnCommand(ID_CLEAR_LIST);
  EXPECT_EQ(window.queue.cancels, 2);
  EXPECT_TRUE(window.main.rows.empty());
}

TEST(OptionsTest, ToggleAndShow) {
  FakeWindow window;
  window.main.OnCommand(ID_UPPERCASE);
  EXPECT_TRUE(window.main.uppercase);
  EXPECT_TRUE(window.view.options.uppercase);
  EXPECT_GT(window.view.redrawnWhole, 0);
  window.main.OnCommand(ID_INCLUDE_HIDDEN);
  EXPECT_TRUE(window.main.includeHidden);
  EXPECT_TRUE(window.view.options.includeHidden);
  window.main.OnCommand(ID_SHOW_LEGACY);
  EXPECT_TRUE(window.main.showLegacy);
  EXPECT_TRUE(window.view.options.showLegacy);
  window.main.OnCommand(ID_CRLF);
  EXPECT_TRUE(window.main.crLf);
  EXPECT_TRUE(window.view.options.crLf);
  window.main.OnCommand(ID_UPPERCASE);
  EXPECT_FALSE(window.view.options.uppercase);
  EXPECT_TRUE(window.view.options.crLf);
}

TEST(OptionsTest, HidingTheLegacyAlgorithmsDeselectsThem) {
  struct Case {
    const char* description;
    AlgoMask before;
    AlgoMask after;
  };
  const Case cases[] = {
      {"MD4 among others", MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Md5), MaskOf(AlgoId::Md5)},
      {"nothing else selected", swr::LegacyAlgoMask, Sha256},
      {"none selected", MaskOf(AlgoId::Blake3), MaskOf(AlgoId::Blake3)},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.main.OnCommand(ID_SHOW_LEGACY);
    window.main.SetAlgoMask(test.before);
    window.main.OnCommand(ID_SHOW_LEGACY);
    EXPECT_EQ(window.main.algorithms, test.after);
    window.main.OnCommand(ID_SHOW_LEGACY);
    EXPECT_EQ(window.main.algorithms, test.after) << "showing them again selects nothing";
  }
}

TEST(AlgoSelectionTest, StartsWithTheDefault) {
  FakeWindow window;
  EXPECT_EQ(window.view.shownMask, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.moreText, u"&More...");
}

// A program can set a box, or tell of it, without a click.
TEST(AlgoSelectionTest, ABoxIsReadAndNotToggled) {
  for (const AlgoBox& box : AlgoBoxes) {
    for (const bool isChecked : {true, false}) {
      FakeWindow window;
      window.main.SetAlgoMask(MaskOf(AlgoId::Md4));
      for (int times = 0; times < 2; ++times) {
        window.view.checkedBoxes = isChecked ? MaskOf(box.algo) : 0;
        window.main.OnCommand(box.control);
        EXPECT_EQ(window.main.algorithms, MaskOf(AlgoId::Md4) | window.view.checkedBoxes);
      }
    }
  }
}

TEST(AlgoSelectionTest, EachBoxSelectsItsAlgorithm) {
  for (const AlgoBox& box : AlgoBoxes) {
    FakeWindow window;
    window.main.SetAlgoMask(MaskOf(AlgoId::Md4));
    window.ClickBox(box);
    EXPECT_EQ(window.main.algorithms, MaskOf(AlgoId::Md4) | MaskOf(box.algo));
    window.ClickBox(box);
    EXPECT_EQ(window.main.algorithms, MaskOf(AlgoId::Md4));
  }
}

TEST(AlgoSelectionTest, TheLastBoxLeavesSha256) {
  FakeWindow window;
  window.main.SetAlgoMask(MaskOf(AlgoId::Md5));
  window.ClickBox({IDC_ALGO_MD5, AlgoId::Md5});
  EXPECT_EQ(window.main.algorithms, Sha256);
  EXPECT_EQ(window.view.shownMask, Sha256);
  window.ClickBox({IDC_ALGO_SHA256, AlgoId::Sha256});
  EXPECT_EQ(window.main.algorithms, Sha256);
}

TEST(AlgoSelectionTest, TheMoreButtonCountsWhatHasNoBox) {
  struct Case {
    AlgoMask mask;
    std::u16string text;
  };
  const Case cases[] = {
      {Sha256, u"&More..."},
      {Sha256 | MaskOf(AlgoId::Crc32), u"&More (+1)..."},
      {MaskOf(AlgoId::Xxh64) | MaskOf(AlgoId::Sha384), u"&More (+2)..."},
      {swr::AllAlgosMask, u"&More (+10)..."},
  };
  for (const Case& test : cases) {
    FakeWindow window;
    window.main.SetAlgoMask(test.mask);
    EXPECT_EQ(window.view.moreText, test.text) << swr::WideToUtf8(window.view.moreText);
  }
}

TEST(AlgoSelectionTest, TheMoreMenuTogglesTheChoice) {
  FakeWindow window;
  window.main.OnCommand(IDC_ALGO_MORE);
  EXPECT_EQ(window.main.algorithms, swr::DefaultAlgoMask) << "nothing chosen";
  window.view.algoToChoose = AlgoId::Crc32;
  window.main.OnCommand(IDC_ALGO_MORE);
  EXPECT_EQ(window.main.algorithms, swr::DefaultAlgoMask | MaskOf(AlgoId::Crc32));
  window.main.OnCommand(IDC_ALGO_MORE);
  EXPECT_EQ(window.main.algorithms, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.menuMask, swr::DefaultAlgoMask | MaskOf(AlgoId::Crc32));
  EXPECT_FALSE(window.view.menuHadLegacy);
}

TEST(AlgoMenuTest, WordsAndSeparators) {
  // A line stands for a separator before the item.
  const std::u16string expected =
      u"CRC32\t(fast, not for security)\n"
      u"-MD5\t(not for security)\n"
      u"SHA-1\t(not for security)\n"
      u"SHA-256\n"
      u"SHA-384\n"
      u"SHA-512\n"
      u"-SHA3-256\n"
      u"SHA3-384\n"
      u"SHA3-512\n"
      u"BLAKE3\n"
      u"-XXH64\t(fast, not for security)\n"
      u"XXH3-64\t(fast, not for security)\n"
      u"XXH128\t(fast, not for security)\n";
  const std::u16string legacy =
      u"-MD2\t(not for security)\n"
      u"MD4\t(not for security)\n";
  const auto render = [](bool withLegacy) {
    std::u16string text;
    for (const AlgoMenuItem& item : BuildAlgoMenu(0, withLegacy)) {
      text += (item.separatorBefore ? u"-" : u"") + item.text + u"\n";
    }
    return text;
  };
  EXPECT_EQ(render(false), expected) << swr::WideToUtf8(render(false));
  EXPECT_EQ(render(true), expected + legacy) << swr::WideToUtf8(render(true));
}

TEST(AlgoMenuTest, ChecksTheSelection) {
  const AlgoMask mask = MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md4);
  for (const AlgoMenuItem& item : BuildAlgoMenu(mask, true)) {
    EXPECT_EQ(item.checked, item.algo == AlgoId::Crc32 || item.algo == AlgoId::Md4)
        << swr::WideToUtf8(item.text);
  }
}

}  // namespace
}  // namespace app::testing
