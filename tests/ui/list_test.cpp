// The list on the screen: columns, cells, and what commands and keys do to rows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr int deleteKey = 0x2E;
constexpr int controlKey = 0x11;
constexpr int downKey = 0x28;
constexpr int returnKey = 0x0D;

// A window with three files with known digests.
class ListTest : public ::testing::Test {
 protected:
  ListTest() {
    window_.Drop(files_);
    window_.WaitUntilIdle();
  }

  // Checks or unchecks the box, and waits for the digests.
  void Toggle(int box) {
    window_.Click(box);
    window_.WaitUntilIdle();
  }

  TempTree tree_;
  std::vector<std::u16string> files_ = {tree_.AddFile(u"abc.bin", DigestsOfAbc.input),
                                        tree_.AddFile(u"digits.bin", DigestsOfDigits.input),
                                        tree_.AddFile(u"empty.bin", DigestsOfNothing.input)};
  RunningWindow window_;
};

TEST_F(ListTest, HasAColumnForEachSelectedAlgorithm) {
  EXPECT_EQ(window_.List().ColumnHeadings(),
            (Texts{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"SHA-256", u"Status"}));
  std::vector<int> widths = {200, 160, 70, 240, 260, 260, 90};
  for (int& width : widths) width = width * window_.Dpi() / 96;
  EXPECT_EQ(window_.ColumnWidths(), widths);
  for (int column = 0; column < 7; ++column) {
    EXPECT_EQ(window_.IsRightAligned(column), column == 2) << column;
  }
}

TEST_F(ListTest, ShowsNameFolderSizeDigestsAndStatus) {
  const struct {
    const char16_t* name;
    const char16_t* size;
    KnownDigests digests;
  } rows[] = {{u"abc.bin", u"3 bytes", DigestsOfAbc},
              {u"digits.bin", u"9 bytes", DigestsOfDigits},
              {u"empty.bin", u"0 bytes", DigestsOfNothing}};
  ASSERT_EQ(window_.RowCount(), 3);
  int row = 0;
  for (const auto& [name, size, digests] : rows) {
    EXPECT_EQ(window_.Row(row++),
              (Texts{name, tree_.Root(), size, std::u16string(digests.md5),
                     std::u16string(digests.sha1), std::u16string(digests.sha256), u"Done"}));
  }
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"3 files, 12 bytes");
}

TEST_F(ListTest, TickingAnAlgorithmAddsItsColumnAndOnlyItsDigests) {
  // The file's content changes.
  swr::testing::WriteBytes(files_[0], DigestsOfDigits.input);
  Toggle(IDC_ALGO_SHA512);
  EXPECT_EQ(window_.List().ColumnHeadings(), (Texts{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1",
                                                    u"SHA-256", u"SHA-512", u"Status"}));
  EXPECT_EQ(window_.Cell(0, u"MD5"), DigestsOfAbc.md5) << "calculated before the change";
  EXPECT_EQ(window_.Cell(0, u"SHA-512"), DigestsOfDigits.sha512);
  EXPECT_EQ(window_.Cell(1, u"SHA-512"), DigestsOfDigits.sha512);
  EXPECT_EQ(window_.Cell(2, u"SHA-512"), DigestsOfNothing.sha512);

  Toggle(IDC_ALGO_BLAKE3);
  EXPECT_EQ(window_.Cell(1, u"BLAKE3"), DigestsOfDigits.blake3);
  EXPECT_EQ(window_.Cell(2, u"BLAKE3"), DigestsOfNothing.blake3);
}

TEST_F(ListTest, DigestsAreKeptWithoutTheirColumn) {
  swr::testing::RemoveFile(files_[1]);
  window_.Click(IDC_ALGO_SHA256);
  EXPECT_EQ(window_.List().ColumnHeadings(),
            (Texts{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"Status"}));
  window_.Click(IDC_ALGO_SHA256);
  EXPECT_FALSE(window_.IsShown(IDC_CANCEL));
  EXPECT_EQ(window_.Cell(1, u"SHA-256"), DigestsOfDigits.sha256);
  EXPECT_EQ(window_.Cell(1, u"Status"), u"Done");
}

TEST_F(ListTest, WithoutAnyAlgorithmSha256IsSelected) {
  for (const int box : {IDC_ALGO_MD5, IDC_ALGO_SHA1, IDC_ALGO_SHA256}) window_.Click(box);
  EXPECT_TRUE(window_.IsChecked(IDC_ALGO_SHA256));
  EXPECT_FALSE(window_.IsChecked(IDC_ALGO_MD5));
  EXPECT_EQ(window_.List().ColumnHeadings(),
            (Texts{u"Name", u"Folder", u"Size", u"SHA-256", u"Status"}));
}

TEST_F(ListTest, UppercaseChangesTheDigestsAndTheMenu) {
  window_.Command(ID_UPPERCASE);
  EXPECT_EQ(window_.Cell(0, u"MD5"), u"900150983CD24FB0D6963F7D28E17F72");
  EXPECT_TRUE(window_.Menu(2)[0].isChecked);
  window_.Command(ID_UPPERCASE);
  EXPECT_EQ(window_.Cell(0, u"MD5"), DigestsOfAbc.md5);
  EXPECT_FALSE(window_.Menu(2)[0].isChecked);
}

TEST_F(ListTest, TheFirstNewRowIsSelected) {
  EXPECT_EQ(window_.List().SelectedIndexes(), std::vector<int>{0});
  window_.Drop({tree_.AddFile(u"later"), tree_.AddFile(u"last")});
  EXPECT_EQ(window_.List().SelectedIndexes(), std::vector<int>{3});
}

TEST_F(ListTest, DeleteKeyRemovesTheSelectedRows) {
  window_.SelectOnly({0, 2});
  window_.PressKey(IDC_LIST, deleteKey);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 1; }));
  EXPECT_EQ(window_.Column(u"Name"), Texts{u"digits.bin"});
  EXPECT_EQ(window_.List().SelectedIndexes(), std::vector<int>{});
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"1 file, 9 bytes");
}

TEST_F(ListTest, RemoveFromListRemovesTheSelectedRowsWhateverHasTheFocus) {
  window_.SelectOnly({1});
  ASSERT_NE(window_.FocusedControl(), IDC_LIST);
  window_.Command(ID_REMOVE);
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc.bin", u"empty.bin"}));
  window_.Command(ID_REMOVE);
  EXPECT_EQ(window_.RowCount(), 2) << "nothing is selected any more";
  window_.Drop({files_[1]});
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc.bin", u"empty.bin", u"digits.bin"}));
}

TEST_F(ListTest, SelectAllSelectsEveryRow) {
  window_.Command(ID_SELECT_ALL);
  EXPECT_EQ(window_.List().SelectedIndexes(), (std::vector<int>{0, 1, 2}));
  window_.Command(ID_REMOVE);
  EXPECT_EQ(window_.RowCount(), 0);
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"");
}

TEST_F(ListTest, ControlASelectsEveryRow) {
  window_.TypeChord({controlKey, 'A'});
  EXPECT_TRUE(WaitFor([&] {
    return window_.List().SelectedIndexes() == (std::vector<int>{0, 1, 2});
  }));
}

TEST_F(ListTest, ClearListRemovesEveryRow) {
  window_.Command(ID_CLEAR_LIST);
  EXPECT_EQ(window_.RowCount(), 0);
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"");
  window_.Drop(files_);
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.RowCount(), 3);
}

TEST_F(ListTest, AClickOnAHeadingSorts) {
  constexpr int name = 0;
  constexpr int size = 2;
  const Texts bySize = {u"empty.bin", u"abc.bin", u"digits.bin"};
  window_.SelectOnly({1});
  window_.ClickHeading(size);
  EXPECT_EQ(window_.Column(u"Name"), bySize);
  EXPECT_EQ(window_.SortMarks(), (std::vector<int>{0, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(window_.List().SelectedIndexes(), std::vector<int>{});
  window_.ClickHeading(size);
  EXPECT_EQ(window_.Column(u"Name"), Texts(bySize.rbegin(), bySize.rend()));
  EXPECT_EQ(window_.SortMarks(), (std::vector<int>{0, 0, -1, 0, 0, 0, 0}));
  window_.ClickHeading(name);
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc.bin", u"digits.bin", u"empty.bin"}));
  EXPECT_EQ(window_.SortMarks(), (std::vector<int>{1, 0, 0, 0, 0, 0, 0}));
  window_.Click(IDC_ALGO_SHA512);
  EXPECT_EQ(window_.SortMarks(), std::vector<int>(8, 0)) << "new columns have no sort mark";
}

// Opens the menu of the More button and chooses this algorithm with the keyboard.
void ChooseFromMore(const RunningWindow& window, const std::u16string& algorithm) {
  window.PostCommand(IDC_ALGO_MORE);
  ASSERT_TRUE(WaitFor([&] { return !window.OpenMenu().empty(); }));
  for (const MenuItem& item : window.OpenMenu()) {
    if (item.id == 0) continue;  // the arrow keys skip separators
    window.PressKey(0, downKey);
    if (item.text.substr(0, item.text.find(u'\t')) == algorithm) break;
  }
  window.PressKey(0, returnKey);
  ASSERT_TRUE(WaitFor([&] { return window.OpenMenu().empty(); }));
}

TEST_F(ListTest, MoreOffersEveryAlgorithm) {
  window_.PostCommand(IDC_ALGO_MORE);
  ASSERT_TRUE(WaitFor([&] { return !window_.OpenMenu().empty(); }));
  Texts shown;
  Texts checked;
  for (const MenuItem& item : window_.OpenMenu()) {
    shown.push_back(item.text);
    if (item.isChecked) checked.push_back(item.text);
  }
  constexpr int escapeKey = 0x1B;
  window_.PressKey(0, escapeKey);
  EXPECT_EQ(shown, (Texts{u"CRC32\t(fast, not for security)", u"", u"MD5\t(not for security)",
                          u"SHA-1\t(not for security)", u"SHA-256", u"SHA-384", u"SHA-512", u"",
                          u"SHA3-256", u"SHA3-384", u"SHA3-512", u"BLAKE3", u"",
                          u"XXH64\t(fast, not for security)", u"XXH3-64\t(fast, not for security)",
                          u"XXH128\t(fast, not for security)"}));
  EXPECT_EQ(checked, (Texts{u"MD5\t(not for security)", u"SHA-1\t(not for security)", u"SHA-256"}));
}

TEST_F(ListTest, AnAlgorithmWithoutABoxIsCountedOnTheMoreButton) {
  ChooseFromMore(window_, u"SHA-384");
  ASSERT_TRUE(WaitFor([&] { return window_.Text(IDC_ALGO_MORE) == u"&More (+1)..."; }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Cell(0, u"SHA-384"),
            u"cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed"
            u"8086072ba1e7cc2358baeca134c825a7");
}

TEST_F(ListTest, HidingTheLegacyAlgorithmsDeselectsThem) {
  window_.Command(ID_SHOW_LEGACY);
  EXPECT_TRUE(window_.Menu(2)[1].isChecked);
  ChooseFromMore(window_, u"MD4");
  ASSERT_TRUE(WaitFor([&] { return window_.Text(IDC_ALGO_MORE) == u"&More (+1)..."; }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Cell(0, u"MD4"), Md4OfAbc);

  window_.Command(ID_SHOW_LEGACY);
  EXPECT_FALSE(window_.Menu(2)[1].isChecked);
  EXPECT_EQ(window_.Text(IDC_ALGO_MORE), u"&More...");
  EXPECT_EQ(window_.List().ColumnHeadings(),
            (Texts{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"SHA-256", u"Status"}));
}

}  // namespace
}  // namespace app::testing
