// The window after the start: the positions, texts and states of its controls; and the end of the
// program.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

struct DesignedControl {
  int id;
  const char16_t* className;
  const char16_t* text;
  int x, y, width, height;  // in dialog units
  bool shown = true;
  bool enabled = true;
};

// In the order of the Tab key.
const std::vector<DesignedControl> designed = {
    {IDC_TOOLBAR, u"ToolbarWindow32", u"", 3, 1, 454, 16},
    {IDC_TOOLBAR_RULE, u"Static", u"", 0, 18, 460, 1},
    {IDC_ALGO_LABEL, u"Static", u"Algorithms:", 7, 24, 40, 9},
    {IDC_ALGO_MD5, u"Button", u"MD&5", 50, 23, 34, 10},
    {IDC_ALGO_SHA1, u"Button", u"SHA-&1", 88, 23, 36, 10},
    {IDC_ALGO_SHA256, u"Button", u"SHA-&256", 128, 23, 44, 10},
    {IDC_ALGO_SHA512, u"Button", u"SHA-512", 176, 23, 44, 10},
    {IDC_ALGO_BLAKE3, u"Button", u"&BLAKE3", 224, 23, 42, 10},
    {IDC_ALGO_MORE, u"Button", u"&More...", 270, 21, 56, 14},
    {IDC_BANNER, u"SysLink", u"", 7, 39, 446, 10, false},
    {IDC_LIST, u"SysListView32", u"", 7, 52, 446, 154},
    {IDC_EXPECTED_LABEL, u"Static", u"&Expected hash:", 7, 215, 52, 9},
    {IDC_EXPECTED, u"Edit", u"", 60, 212, 327, 14},
    {IDC_PASTE, u"Button", u"&Paste", 391, 212, 62, 14},
    {IDC_RESULT, u"Static", u"", 60, 229, 393, 13},
    {IDC_DETAILS, u"Edit", u"", 7, 246, 380, 82},
    {IDC_COPY, u"Button", u"&Copy Hashes", 391, 246, 62, 14, true, false},
    {IDC_VIRUSTOTAL, u"Button", u"Virus&Total", 391, 264, 62, 14, true, false},
    {IDC_OPEN_FOLDER, u"Button", u"Open F&older", 391, 282, 62, 14, true, false},
    {IDC_STATUS_TEXT, u"Static", u"", 7, 338, 236, 9},
    {IDC_PROGRESS, u"msctls_progress32", u"", 247, 337, 52, 10, false},
    {IDC_CANCEL, u"Button", u"Cancel", 303, 334, 46, 14, false},
    {IDC_LINKS, u"SysLink", u"<a id=\"cli\">Command-line tool</a>    <a id=\"about\">About</a>",
     353, 338, 100, 9},
};

std::vector<int> DesignedOrder() {
  std::vector<int> ids;
  for (const DesignedControl& control : designed) ids.push_back(control.id);
  return ids;
}

TEST(StartTest, ShowsEveryControlWithItsTextAndClass) {
  const RunningWindow window;
  EXPECT_EQ(window.Title(), u"Sumwright");
  for (const DesignedControl& control : designed) {
    SCOPED_TRACE(control.id);
    ASSERT_NE(window.Control(control.id), nullptr);
    EXPECT_EQ(window.Text(control.id), control.text);
    EXPECT_EQ(window.ClassOf(control.id), control.className);
    EXPECT_EQ(window.IsShown(control.id), control.shown);
    EXPECT_EQ(window.IsEnabled(control.id), control.enabled);
  }
}

TEST(StartTest, PutsEveryControlWhereItWasDesigned) {
  const RunningWindow window;
  for (const DesignedControl& control : designed) {
    SCOPED_TRACE(control.id);
    const Rect expected =
        window.FromDialogUnits(control.x, control.y, control.width, control.height);
    const Rect place = window.Place(control.id);
    if (control.id == IDC_LIST) {
      // While no banner shows, the list covers its space.
      const Rect banner = window.FromDialogUnits(7, 39, 446, 10);
      EXPECT_EQ(place, (Rect{expected.left, banner.top, expected.right, expected.bottom}));
    } else if (control.id == IDC_TOOLBAR) {
      // As high as its buttons require, with equal margins on both sides.
      EXPECT_EQ(place.left, expected.left);
      EXPECT_EQ(place.top, expected.top);
      EXPECT_EQ(place.right, window.ClientSize().width - expected.left);
      EXPECT_GE(place.Height(), expected.Height());
    } else if (control.id == IDC_TOOLBAR_RULE) {
      // The control sets its height to that of an etched line, and may add the width of its edges.
      EXPECT_EQ(place.left, expected.left);
      EXPECT_EQ(place.top, expected.top);
      EXPECT_GE(place.right, expected.right);
      EXPECT_EQ(place.Height(), 2);
    } else {
      EXPECT_EQ(place, expected);
    }
  }
  const Rect whole = window.FromDialogUnits(0, 0, 460, 356);
  EXPECT_EQ(window.ClientSize(), (Size{whole.right, whole.bottom}));
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Including the progress bar and the Cancel button, which show while files are hashed.
TEST(StartTest, NothingOverlapsAndNothingIsCutOff) {
  const RunningWindow window;
  const Size client = window.ClientSize();
  for (const DesignedControl& a : designed) {
    if (a.id == IDC_BANNER) continue;
    const Rect place = window.Place(a.id);
    const bool reachesAcross = a.id == IDC_TOOLBAR_RULE;
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.bottom <= client.height &&
                (place.right <= client.width || reachesAcross))
        << a.id << " at " << place << " in " << client;
    for (const DesignedControl& b : designed) {
      if (b.id <= a.id || b.id == IDC_BANNER) continue;
      EXPECT_FALSE(Overlap(place, window.Place(b.id)))
          << a.id << " at " << place << " and " << b.id << " at " << window.Place(b.id);
    }
  }
}

TEST(StartTest, ButtonsHaveRoomForTheirTexts) {
  const RunningWindow window;
  for (const DesignedControl& control : designed) {
    if (control.className != std::u16string_view(u"Button")) continue;
    const Size ideal = window.IdealSize(control.id);
    EXPECT_GT(ideal.width, 0) << control.id;
    EXPECT_GE(window.Place(control.id).Width(), ideal.width) << control.id;
  }
}

TEST(StartTest, TabGoesFromTopToBottom) {
  const RunningWindow window;
  EXPECT_EQ(window.ControlsInOrder(), DesignedOrder());
  EXPECT_EQ(window.TabOrder(),
            (std::vector<int>{IDC_ALGO_MD5, IDC_ALGO_SHA1, IDC_ALGO_SHA256, IDC_ALGO_SHA512,
                              IDC_ALGO_BLAKE3, IDC_ALGO_MORE, IDC_LIST, IDC_EXPECTED, IDC_PASTE,
                              IDC_DETAILS, IDC_LINKS}));
}

struct DesignedMenu {
  const char16_t* title;
  std::vector<std::pair<uint32_t, const char16_t*>> items;  // 0 for a separator
};

const std::vector<DesignedMenu> menus = {
    {u"&File",
     {{ID_ADD_FILES, u"Add &Files...\tCtrl+O"},
      {ID_ADD_FOLDER, u"Add F&older..."},
      {ID_VERIFY_FILE, u"&Verify Checksum File..."},
      {0, u""},
      {ID_SAVE_CHECKSUMS, u"&Save Checksums...\tCtrl+S"},
      {0, u""},
      {ID_EXIT, u"E&xit"}}},
    {u"&Edit",
     {{ID_COPY_HASHES, u"&Copy Hashes\tCtrl+C"},
      {ID_PASTE_EXPECTED, u"&Paste Expected Hash\tCtrl+V"},
      {0, u""},
      {ID_SELECT_ALL, u"Select &All\tCtrl+A"},
      {ID_REMOVE, u"&Remove from List\tDel"},
      {ID_CLEAR_LIST, u"C&lear List"},
      {0, u""},
      {ID_HASH_TEXT, u"Hash &Text..."}}},
    {u"&Options",
     {{ID_UPPERCASE, u"&Uppercase Hashes"},
      {ID_SHOW_LEGACY, u"Show &Legacy Algorithms (MD2, MD4)"},
      {ID_INCLUDE_HIDDEN, u"Include &Hidden and System Files"},
      {ID_CRLF, u"&Windows Line Ends in Saved Files"},
      {0, u""},
      {ID_EXPLORER_MENU, u"Add to Explorer &Context Menu"},
      {ID_SEND_TO, u"Add to &Send To Menu"}}},
    {u"&Help",
     {{ID_HELP_ONLINE, u"Online &Help\tF1"},
      {ID_WEBSITE, u"Zendrik &Website"},
      {ID_CLI_TOOL, u"&Command-Line Tool (swrhash)..."},
      {ID_PROGRAM_FOLDER, u"Get the &Setup (Explorer Menu, Start Menu)..."},
      {0, u""},
      {ID_ABOUT, u"&About Sumwright"}}},
};

TEST(StartTest, MenusOfferTheAvailableCommands) {
  const RunningWindow window;
  std::vector<std::u16string> titles;
  for (const DesignedMenu& menu : menus) titles.push_back(menu.title);
  EXPECT_EQ(window.MenuBar(), titles);
  for (size_t m = 0; m < menus.size(); ++m) {
    const std::vector<MenuItem> items = window.Menu(static_cast<int>(m));
    ASSERT_EQ(items.size(), menus[m].items.size());
    for (size_t i = 0; i < items.size(); ++i) {
      EXPECT_EQ(items[i].id, menus[m].items[i].first);
      EXPECT_EQ(items[i].text, menus[m].items[i].second);
      EXPECT_FALSE(items[i].isChecked) << items[i].id;
      EXPECT_TRUE(items[i].isEnabled || items[i].id == 0) << items[i].id;
    }
  }
}

TEST(StartTest, SelectsMd5Sha1AndSha256) {
  const RunningWindow window;
  const std::vector<std::pair<int, bool>> boxes = {{IDC_ALGO_MD5, true},
                                                   {IDC_ALGO_SHA1, true},
                                                   {IDC_ALGO_SHA256, true},
                                                   {IDC_ALGO_SHA512, false},
                                                   {IDC_ALGO_BLAKE3, false}};
  for (const auto& [box, isChecked] : boxes) EXPECT_EQ(window.IsChecked(box), isChecked) << box;
}

TEST(StartTest, WithoutPathsTheListIsEmpty) {
  RunningWindow window;
  EXPECT_EQ(window.RowCount(), 0);
  EXPECT_EQ(window.Text(IDC_STATUS_TEXT), u"");
  EXPECT_EQ(window.Close(), 0);
}

TEST(StartTest, ExitEndsTheProgram) {
  RunningWindow window;
  window.PostCommand(ID_EXIT);
  EXPECT_EQ(window.WaitForEnd(), 0);
}

TEST(StartTest, PathsOfTheCommandLineAreHashedInTheirOrder) {
  TempTree tree;
  tree.AddFile(u"b.txt", DigestsOfAbc.input);
  tree.AddFile(u"a b.txt", DigestsOfDigits.input);
  tree.AddFile(u"folder/inside \u00e9\U0001F600.txt", DigestsOfNothing.input);
  const RunningWindow window(
      {.arguments = {u"b.txt", tree.Path(u"folder"), u"a b.txt"}, .folder = tree.Root()});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"),
            (std::vector<std::u16string>{u"b.txt", u"inside \u00e9\U0001F600.txt", u"a b.txt"}));
  EXPECT_EQ(window.Column(u"Folder"),
            (std::vector<std::u16string>{tree.Root(), tree.Path(u"folder"), tree.Root()}));
  EXPECT_EQ(window.Column(u"SHA-1"),
            (std::vector<std::u16string>{std::u16string(DigestsOfAbc.sha1),
                                         std::u16string(DigestsOfNothing.sha1),
                                         std::u16string(DigestsOfDigits.sha1)}));
  EXPECT_EQ(window.Column(u"Status"), (std::vector<std::u16string>{u"Done", u"Done", u"Done"}));
  EXPECT_EQ(window.Text(IDC_STATUS_TEXT), u"3 files, 12 bytes");
}

TEST(StartTest, AMissingFileIsShownAsMissing) {
  TempTree tree;
  const RunningWindow window({.arguments = {tree.Path(u"nowhere.bin")}});
  window.WaitUntilIdle();
  ASSERT_EQ(window.RowCount(), 1);
  EXPECT_EQ(window.Row(0), (std::vector<std::u16string>{u"nowhere.bin", tree.Root(), u"", u"", u"",
                                                        u"", u"Missing"}));
  EXPECT_EQ(window.Text(IDC_STATUS_TEXT), u"1 file, 0 bytes");
}

TEST(StartTest, StartsMinimizedOnRequest) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"abc", DigestsOfAbc.input);
  RunningWindow window({.arguments = {file}, .minimized = true});
  window.WaitUntilIdle();
  EXPECT_TRUE(window.IsMinimized());
  EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  EXPECT_EQ(window.Close(), 0);
}

}  // namespace
}  // namespace app::testing
