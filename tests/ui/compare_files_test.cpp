// Compare These Two Files, from the list's menu to the message.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

class CompareFilesTest : public ::testing::Test {
 protected:
  CompareFilesTest() {
    window_.Drop({tree_.AddFile(u"a.txt", "same"), tree_.AddFile(u"b.txt", "same"),
                  tree_.AddFile(u"c.txt", "four"), tree_.AddFile(u"d.txt", "longer"),
                  tree_.Path(u"e.txt")});
    window_.WaitUntilIdle();
  }

  void ExpectAnswer(const std::vector<int>& rows, const std::u16string& instruction,
                    const std::u16string& content) {
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    window_.ChooseFromMenu(ID_CTX_COMPARE);
    const ProgramDialog message(window_, u"Sumwright");
    EXPECT_EQ(message.Instruction(), instruction);
    EXPECT_EQ(message.Content(), content);
    message.Press(IDOK);
  }

  TempTree tree_;
  RunningWindow window_;
};

TEST_F(CompareFilesTest, SaysWhetherTheyAreTheSame) {
  ExpectAnswer({0, 1}, u"The two files are identical.",
               u"a.txt\nb.txt\n\nCompared by SHA-256; the sizes are equal too.");
  ExpectAnswer({1, 2}, u"The two files are different.", u"b.txt\nc.txt\n\nCompared by SHA-256.");
  ExpectAnswer({2, 3}, u"The two files are different.",
               u"c.txt (4 bytes)\nd.txt (6 bytes)\n\nTheir sizes differ.");
  ExpectAnswer({0, 4}, u"One of the files can't be read.", u"");
}

TEST_F(CompareFilesTest, CalculatesWhatIsMissingWithoutAColumn) {
  window_.Click(IDC_ALGO_SHA256);
  window_.Command(ID_CLEAR_LIST);
  window_.Drop({tree_.Path(u"a.txt"), tree_.Path(u"b.txt")});
  window_.WaitUntilIdle();
  ExpectAnswer({0, 1}, u"The two files are identical.",
               u"a.txt\nb.txt\n\nCompared by SHA-256; the sizes are equal too.");
  EXPECT_EQ(
      window_.List().ColumnHeadings(),
      (std::vector<std::u16string>{u"Name", u"Folder", u"Size", u"MD5", u"SHA-1", u"Status"}));
}

TEST_F(CompareFilesTest, IsOfferedForTwoFilesOnly) {
  for (const std::vector<int>& rows : {std::vector{0}, std::vector{0, 1}, std::vector{0, 1, 2}}) {
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    const std::vector<MenuItem> items = window_.OpenMenu();
    const auto item = std::ranges::find(items, uint32_t{ID_CTX_COMPARE}, &MenuItem::id);
    ASSERT_NE(item, items.end());
    EXPECT_EQ(item->isEnabled, rows.size() == 2);
    constexpr int escapeKey = 0x1B;
    window_.PressKey(0, escapeKey);
    ASSERT_TRUE(WaitFor([&] { return window_.OpenMenu().empty(); }));
  }
}

}  // namespace
}  // namespace app::testing
