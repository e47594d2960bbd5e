// A second instance hands files over while a menu or a dialog of the first window is open. The
// command acts on the rows that the menu or dialog was opened for.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/text_file.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

class SelectionSnapshotTest : public ::testing::Test {
 protected:
  SelectionSnapshotTest() {
    window_.Drop(
        {tree_.AddFile(u"a.bin", DigestsOfAbc.input), tree_.AddFile(u"b.bin", DigestsOfAbc.input)});
    window_.WaitUntilIdle();
    late_ = tree_.AddFile(u"late.bin", DigestsOfDigits.input);
  }

  void HandOverLateFile() {
    const int rows = window_.RowCount();
    const ProgramProcess second({.arguments = {late_}, .keepSettings = true});
    EXPECT_EQ(second.WaitForEnd(), 0);
    ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == rows + 1; }));
  }
  // Opens the menu for these rows, and chooses the command once the late file is in the list.
  void Choose(const std::vector<int>& rows, uint32_t entry) {
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    HandOverLateFile();
    window_.ChooseFromMenu(entry);
  }

  TempTree tree_;
  RunningWindow window_;
  std::u16string late_;
};

TEST_F(SelectionSnapshotTest, RemoveActsOnTheRowsOfTheMenu) {
  Choose({0}, ID_CTX_REMOVE);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 2; }));
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"b.bin", u"late.bin"}));
}

TEST_F(SelectionSnapshotTest, CopyPathActsOnTheRowsOfTheMenu) {
  CopyText(u"something else");
  Choose({0}, ID_CTX_COPY_PATH);
  EXPECT_TRUE(WaitFor([&] { return CopiedText() == tree_.Path(u"a.bin"); }))
      << ::testing::PrintToString(CopiedText());
}

TEST_F(SelectionSnapshotTest, CompareActsOnTheRowsOfTheMenu) {
  Choose({0, 1}, ID_CTX_COMPARE);
  const ProgramDialog message(window_, u"Sumwright");
  EXPECT_EQ(message.Instruction(), u"The two files are identical.");
  EXPECT_EQ(message.Content(), u"a.bin\nb.bin\n\nCompared by SHA-256; the sizes are equal too.");
  message.Press(IDOK);
}

TEST_F(SelectionSnapshotTest, SavingActsOnTheRowsSelectedBeforeTheDialog) {
  window_.Drop({tree_.AddFile(u"c.bin", DigestsOfAbc.input)});
  window_.WaitUntilIdle();
  window_.SelectOnly({0, 1});
  window_.PostCommand(ID_SAVE_CHECKSUMS);
  const ProgramDialog dialog(window_, u"Save Checksums");
  HandOverLateFile();
  const std::u16string target = tree_.Path(u"saved");
  dialog.SetFileName(target);
  dialog.Press(IDOK);
  const std::u16string sha256(DigestsOfAbc.sha256);
  const std::u16string expected = sha256 + u"  a.bin\n" + sha256 + u"  b.bin\n";
  EXPECT_TRUE(WaitFor([&] { return swr::ReadTextFile(target + u".sha256", nullptr) == expected; }))
      << ::testing::PrintToString(swr::ReadTextFile(target + u".sha256", nullptr));
}

}  // namespace
}  // namespace app::testing
