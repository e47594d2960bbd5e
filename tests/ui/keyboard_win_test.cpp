// The real window without a mouse: the focus, typing letters into the list, and the menu key.
#include "swr/system/windows_api_win.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using swr::testing::AskWindow;
using swr::testing::TempTree;
using Rows = std::vector<int>;

class KeyboardTest : public ::testing::Test {
 protected:
  KeyboardTest() {
    window_.Drop({tree_.AddFile(u"alpha.bin", DigestsOfAbc.input),
                  tree_.AddFile(u"beta.bin", DigestsOfAbc.input),
                  tree_.AddFile(u"Bravo.bin", DigestsOfAbc.input),
                  tree_.AddFile(u"gamma.bin", DigestsOfAbc.input)});
    window_.WaitUntilIdle();
  }

  TempTree tree_;
  RunningWindow window_;
};

// ---- The focus.

struct FocusCase {
  int button;
  Rows selected;  // with which the button is enabled
  int command;    // which disables it
};

const FocusCase focusCases[] = {
    {IDC_VIRUSTOTAL, {0}, ID_SELECT_ALL},
    {IDC_OPEN_FOLDER, {0}, ID_SELECT_ALL},
    {IDC_COPY, {0}, ID_REMOVE},
};

TEST_F(KeyboardTest, TheFocusLeavesADisabledButton) {
  for (const FocusCase& test : focusCases) {
    SCOPED_TRACE(test.button);
    window_.SelectOnly(test.selected);
    window_.FocusOn(test.button);
    ASSERT_EQ(window_.FocusedControl(), test.button);
    window_.Command(test.command);
    EXPECT_FALSE(window_.IsEnabled(test.button));
    EXPECT_EQ(window_.FocusedControl(), IDC_LIST);
  }
}

TEST_F(KeyboardTest, AfterwardsTabAndDeleteWorkInTheList) {
  window_.SelectOnly({0});
  window_.FocusOn(IDC_VIRUSTOTAL);
  window_.TypeChord({VK_CONTROL, 'A'});
  ASSERT_TRUE(WaitFor([&] { return !window_.IsEnabled(IDC_VIRUSTOTAL); }));
  window_.TypeChord({VK_TAB});
  EXPECT_TRUE(WaitFor([&] { return window_.FocusedControl() == IDC_EXPECTED; }));
  window_.TypeChord({VK_SHIFT, VK_TAB});
  EXPECT_TRUE(WaitFor([&] { return window_.FocusedControl() == IDC_LIST; }));
  window_.TypeChord({VK_DELETE});
  EXPECT_TRUE(WaitFor([&] { return window_.RowCount() == 0; }));
}

// ---- Letters in the list.

TEST_F(KeyboardTest, ALetterSelectsTheNextNameThatBeginsWithIt) {
  struct Key {
    int key;
    int row;  // the selected one afterwards
  };
  // In a different case from some of the names, and finally back to the first.
  const Key keys[] = {{'B', 1}, {'B', 2}, {'B', 1}, {'G', 3}, {'A', 0}, {'Z', 0}, {'G', 3}};
  window_.SelectOnly({0});
  window_.FocusOn(IDC_LIST);
  for (const Key& key : keys) {
    SCOPED_TRACE(static_cast<char>(key.key));
    window_.TypeChord({key.key});
    EXPECT_TRUE(WaitFor([&] { return window_.List().SelectedIndexes() == Rows{key.row}; },
                        milliseconds(3000)))
        << ::testing::PrintToString(window_.List().SelectedIndexes());
    Sleep(700);  // letters typed sooner are part of the same word
    EXPECT_EQ(window_.List().SelectedIndexes(), Rows{key.row});
  }
}

TEST_F(KeyboardTest, LettersTypedQuicklyAreOneWord) {
  window_.SelectOnly({0});
  window_.FocusOn(IDC_LIST);
  window_.TypeChord({'B'});
  window_.TypeChord({'R'});
  EXPECT_TRUE(
      WaitFor([&] { return window_.List().SelectedIndexes() == Rows{2}; }, milliseconds(3000)))
      << ::testing::PrintToString(window_.List().SelectedIndexes());
}

// ---- The menu key.

// The position of the open menu on the screen.
Rect MenuPosition(const RunningWindow& window) {
  HWND popup = nullptr;
  while ((popup = FindWindowExW(nullptr, popup, L"#32768", nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(popup, &process);
    if (process != window.ProcessId() || !IsWindowVisible(popup)) continue;
    RECT rect = {};
    GetWindowRect(popup, &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
  }
  return {};
}

// In the key's message both coordinates are -1, whatever the other bits are.
TEST_F(KeyboardTest, TheMenuKeyOpensTheMenuBesideTheRow) {
  window_.MoveTo(200, 150);
  RECT list = {};
  GetWindowRect(window_.Control(IDC_LIST), &list);
  struct Case {
    LPARAM place;
    bool besideTheRow;
  };
  const Case cases[] = {
      {-1, true},
      {static_cast<LPARAM>(MAKELPARAM(-1, -1)), true},
      // A point at the edge of a screen is still a position of the mouse.
      {static_cast<LPARAM>(MAKELPARAM(-1, 300)), false},
      {static_cast<LPARAM>(MAKELPARAM(300, -1)), false},
  };
  window_.SelectOnly({2});
  for (const Case& test : cases) {
    SCOPED_TRACE(test.place);
    PostMessageW(window_.Handle(), WM_CONTEXTMENU,
                 reinterpret_cast<WPARAM>(window_.Control(IDC_LIST)), test.place);
    ASSERT_TRUE(WaitFor([&] { return !window_.OpenMenu().empty(); }));
    const Rect menu = MenuPosition(window_);
    const bool isBeside = menu.left >= list.left && menu.left < list.right && menu.top > list.top &&
                          menu.top < list.bottom;
    EXPECT_EQ(isBeside, test.besideTheRow) << menu;
    window_.PressKey(0, VK_ESCAPE);
    ASSERT_TRUE(WaitFor([&] { return window_.OpenMenu().empty(); }));
  }
}

// ---- The algorithms' check boxes.

// A screen reader may set a check box and send its message, without a click.
TEST_F(KeyboardTest, TheStateOfABoxIsReadAndNotToggled) {
  const int columns = window_.List().ColumnCount();
  window_.Command(IDC_ALGO_MD5);
  EXPECT_TRUE(window_.IsChecked(IDC_ALGO_MD5));
  EXPECT_EQ(window_.List().ColumnCount(), columns);
  AskWindow(window_.Control(IDC_ALGO_MD5), BM_SETCHECK, BST_UNCHECKED);
  window_.Command(IDC_ALGO_MD5);
  EXPECT_FALSE(window_.IsChecked(IDC_ALGO_MD5));
  EXPECT_EQ(window_.List().ColumnCount(), columns - 1);
  window_.Click(IDC_ALGO_MD5);
  EXPECT_TRUE(window_.IsChecked(IDC_ALGO_MD5));
  EXPECT_EQ(window_.List().ColumnCount(), columns);
}

// ---- The toolbar, whose buttons are always enabled.

TEST_F(KeyboardTest, TheToolbarHasNoImagesForDisabledButtons) {
  EXPECT_EQ(AskWindow(window_.Control(IDC_TOOLBAR), TB_GETDISABLEDIMAGELIST), 0);
  EXPECT_NE(AskWindow(window_.Control(IDC_TOOLBAR), TB_GETIMAGELIST), 0);
}

}  // namespace
}  // namespace app::testing
