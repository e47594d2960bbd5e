// The system's dialogs for Add Files and Add Folder.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

class PickersTest : public ::testing::Test {
 protected:
  ProgramDialog Open(int command, const std::u16string& title) {
    window_.PostCommand(command);
    return {window_, title};
  }

  TempTree tree_;
  std::u16string abc_ = tree_.AddFile(u"d/abc", DigestsOfAbc.input);
  std::u16string digits_ = tree_.AddFile(u"d/digits", DigestsOfDigits.input);
  RunningWindow window_;
};

TEST_F(PickersTest, ACancelledDialogAddsNothing) {
  for (const auto& [command, title] :
       {std::pair{ID_ADD_FILES, u"Add Files"}, std::pair{ID_ADD_FOLDER, u"Add Folder"}}) {
    const ProgramDialog dialog = Open(command, title);
    EXPECT_TRUE(WaitFor([&] { return !window_.TakesInput(); })) << "the dialog is modal";
    dialog.SetFileName(u"");
    dialog.Press(IDCANCEL);
    EXPECT_TRUE(window_.TakesInput());
    EXPECT_EQ(window_.RowCount(), 0);
  }
}

TEST_F(PickersTest, AddFilesAcceptsSeveral) {
  const ProgramDialog dialog = Open(ID_ADD_FILES, u"Add Files");
  dialog.SetFileName(u'"' + abc_ + u"\" \"" + digits_ + u'"');
  dialog.Press(IDOK);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 2; }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc", u"digits"}));
  EXPECT_EQ(window_.Column(u"Folder"), Texts(2, tree_.Path(u"d")));
  EXPECT_EQ(window_.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  EXPECT_EQ(window_.Cell(1, u"SHA-256"), DigestsOfDigits.sha256);
}

TEST_F(PickersTest, AddFolderAddsAllItsFiles) {
  const ProgramDialog dialog = Open(ID_ADD_FOLDER, u"Add Folder");
  dialog.SetFileName(tree_.Path(u"d"));
  dialog.Press(IDOK);
  ASSERT_TRUE(WaitFor([&] { return window_.RowCount() == 2; }));
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc", u"digits"}));
  EXPECT_EQ(window_.Cell(1, u"MD5"), DigestsOfDigits.md5);
}

TEST_F(PickersTest, ControlOOpensAddFiles) {
  constexpr int controlKey = 0x11;
  window_.TypeChord({controlKey, 'O'});
  const ProgramDialog dialog(window_, u"Add Files");
  dialog.SetFileName(u"");
  dialog.Press(IDCANCEL);
}

}  // namespace
}  // namespace app::testing
