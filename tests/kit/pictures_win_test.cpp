// Takes pictures of the window for the report, as a user sees it on this computer. A person judges
// them; the tests only check that the window reaches each state.
#include <gtest/gtest.h>

#include <string>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/window_picture_win.h"
#include "tests/support/temp_tree.h"
#include "tests/support/wine_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;

constexpr uint64_t MiB = uint64_t{1} << 20;
constexpr int escapeKey = 0x1B;

// The program in a folder of the tests, so that no picture shows where the kit is.
class PicturesTest : public ::testing::Test {
 protected:
  PicturesTest() {
    for (const auto& [name, bytes] : {std::pair{u"camera.zip", "camera"},
                                      {u"holiday.jpg", "holiday"},
                                      {u"invoice 1042.txt", "Thank you for your order.\n"},
                                      {u"setup.exe", "MZ setup"},
                                      {u"notes/shopping list.txt", "Milk, bread, coffee.\n"}}) {
      tree_.AddFile(std::u16string(u"Downloads/") + name, bytes);
    }
    program_ = tree_.AddFolder(u"Sumwright") + u"\\Sumwright.exe";
    CopyFileW(AsWide(ProgramUnderTest()), AsWide(program_), FALSE);
  }

  // Wide enough for all columns, if the screen is.
  static void Enlarge(const RunningWindow& window) {
    const int dpi = window.Dpi();
    window.MoveTo(10, 10);
    window.Resize({std::min(1330 * dpi / 96, GetSystemMetrics(SM_CXSCREEN) - 40),
                   std::min(720 * dpi / 96, GetSystemMetrics(SM_CYSCREEN) - 80)});
    window.BringToFront();
  }
  std::u16string Downloads() const { return tree_.Path(u"Downloads"); }

  // Four lines: a correct one, a wrong one, one of a missing file, and one that is not a checksum.
  std::u16string AddList() {
    const auto line = [](std::u16string_view digest, const char* name) {
      return swr::WideToUtf8(digest) + "  " + name + "\n";
    };
    tree_.AddFile(u"Downloads/abc.bin", DigestsOfAbc.input);
    return tree_.AddFile(u"Downloads/SHA256SUMS", line(DigestsOfAbc.sha256, "abc.bin") +
                                                      line(DigestsOfDigits.sha256, "setup.exe") +
                                                      line(DigestsOfAbc.sha256, "missing.bin") +
                                                      "A line of another kind\n");
  }

  // Opens a dialog by its command, takes its picture and closes it.
  void PictureOf(const RunningWindow& window, int command, const std::u16string& title,
                 const std::u16string& name, int closeButton) {
    window.PostCommand(command);
    const ProgramDialog dialog(window, title);
    TakePicture(window, name);
    dialog.Press(closeButton);
  }

  TempTree tree_;
  std::u16string program_;
};

TEST_F(PicturesTest, IdleAndHashing) {
  RunningWindow window({.program = program_});
  Enlarge(window);
  TakePicture(window, u"01 idle");
  const std::u16string large = tree_.AddFile(u"Downloads/dvd.iso");
  swr::testing::ResizeFile(large, 4096 * MiB);
  window.Drop({Downloads()});
  ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
  TakePicture(window, u"02 hashing");
  window.Click(IDC_CANCEL);
  window.WaitUntilIdle();
  TakePicture(window, u"03 cancelled");
  EXPECT_EQ(window.Close(), 0);
}

TEST_F(PicturesTest, MenusAndSelections) {
  const RunningWindow window({.program = program_});
  Enlarge(window);
  window.Drop({Downloads()});
  window.WaitUntilIdle();
  TakePicture(window, u"04 done");
  window.SelectOnly({0, 1});
  window.OpenListMenu();
  TakePicture(window, u"05 menu of the list");
  window.PressKey(0, escapeKey);
  ASSERT_TRUE(WaitFor([&] { return window.OpenMenu().empty(); }));
  window.PostCommand(IDC_ALGO_MORE);
  ASSERT_TRUE(WaitFor([&] { return !window.OpenMenu().empty(); }));
  TakePicture(window, u"06 menu of algorithms");
  window.PressKey(0, escapeKey);
  ASSERT_TRUE(WaitFor([&] { return window.OpenMenu().empty(); }));
}

TEST_F(PicturesTest, ExpectedHash) {
  const RunningWindow window({.program = program_});
  Enlarge(window);
  window.Drop({tree_.AddFile(u"Downloads/abc.bin", DigestsOfAbc.input)});
  window.WaitUntilIdle();
  window.SetExpected(std::u16string(DigestsOfAbc.sha256));
  window.WaitUntilIdle();
  TakePicture(window, u"07 match");
  window.SetExpected(std::u16string(DigestsOfDigits.sha1));
  window.WaitUntilIdle();
  TakePicture(window, u"08 no match");
}

TEST_F(PicturesTest, Verification) {
  const std::u16string list = AddList();
  const RunningWindow window({.program = program_});
  Enlarge(window);
  window.Drop({list});
  window.WaitUntilIdle();
  TakePicture(window, u"09 offer to verify");
  window.FollowBannerLink(u"a");
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == 3; }));
  window.WaitUntilIdle();
  TakePicture(window, u"10 verdict");

  // A long file while it is being hashed.
  const std::u16string large = tree_.AddFile(u"Downloads/dvd.iso");
  swr::testing::ResizeFile(large, 4096 * MiB);
  window.Command(ID_CLEAR_LIST);
  window.Drop({tree_.AddFile(u"Downloads/dvd.sha256",
                             swr::WideToUtf8(DigestsOfAbc.sha256) + "  dvd.iso\n")});
  window.FollowBannerLink(u"a");
  ASSERT_TRUE(WaitFor([&] { return window.ProgressPosition() > 0; }));
  TakePicture(window, u"11 verifying");
}

TEST_F(PicturesTest, Dialogs) {
  const RunningWindow window({.program = program_});
  Enlarge(window);
  PictureOf(window, ID_ABOUT, u"About Sumwright", u"12 about", IDOK);
  PictureOf(window, ID_CLI_TOOL, u"Command-Line Tool", u"13 command-line tool", IDCLOSE);
  PictureOf(window, ID_HASH_TEXT, u"Hash Text", u"14 hash text", IDCANCEL);
  PictureOf(window, ID_SAVE_CHECKSUMS, u"Sumwright", u"15 message", IDOK);
  PictureOf(window, ID_EXPLORER_MENU, u"Sumwright", u"16 explorer entry", IDOK);
  window.Command(ID_EXPLORER_MENU);
}

}  // namespace
}  // namespace app::testing
