// Relative paths, on the command line or in a drop.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

TEST(RelativePathsTest, OnTheCommandLineBecomeFullPaths) {
  TempTree tree;
  tree.AddFile(u"folder/in it.txt", DigestsOfAbc.input);
  tree.AddFile(u"folder/deeper/deep.txt", DigestsOfAbc.input);
  tree.AddFile(u"beside.txt", DigestsOfAbc.input);
  const RunningWindow window({.arguments = {u"folder", u"./beside.txt"}, .folder = tree.Root()});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"), (Texts{u"in it.txt", u"deep.txt", u"beside.txt"}));
  EXPECT_EQ(window.Column(u"Folder"),
            (Texts{tree.Path(u"folder"), tree.Path(u"folder/deeper"), tree.Root()}));
  EXPECT_EQ(window.Column(u"Status"), Texts(3, u"Done"));
}

// The files in a folder are identified by their path from the walk, which begins with the folder as
// it was given.
TEST(RelativePathsTest, AFolderInAnotherFormAddsItsFilesAgain) {
  TempTree tree;
  tree.AddFile(u"folder/a.txt", DigestsOfAbc.input);
  std::u16string slashed = tree.Path(u"folder");
  for (char16_t& unit : slashed) unit = unit == u'\\' ? u'/' : unit;
  const RunningWindow window({.folder = tree.Root()});
  window.Drop({tree.Path(u"folder")});
  window.Drop({tree.Path(u"folder")});
  EXPECT_EQ(window.RowCount(), 1);
  window.Drop({u"folder"});
  EXPECT_EQ(window.RowCount(), 2);
  window.Drop({slashed});
  EXPECT_EQ(window.RowCount(), 3);
  window.Drop({u"folder\\a.txt"});
  EXPECT_EQ(window.RowCount(), 3) << "a file is recognised by its full path";
  EXPECT_EQ(window.Column(u"Folder"), Texts(3, tree.Path(u"folder")));
}

}  // namespace
}  // namespace app::testing
