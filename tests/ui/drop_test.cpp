// Files and folders dropped on the window.
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

class DropTest : public ::testing::Test {
 protected:
  // The rows of the list, as paths below the tree.
  Texts ShownFiles() const {
    Texts files;
    const Texts names = window_.Column(u"Name");
    const Texts folders = window_.Column(u"Folder");
    for (size_t i = 0; i < names.size(); ++i) {
      const std::u16string path = folders[i] + u'\\' + names[i];
      EXPECT_TRUE(path.starts_with(tree_.Root() + u'\\'));
      files.push_back(path.substr(tree_.Root().size() + 1));
    }
    return files;
  }

  TempTree tree_;
  RunningWindow window_;
};

TEST_F(DropTest, AFileIsAddedAndHashed) {
  window_.Drop({tree_.AddFile(u"abc", DigestsOfAbc.input)});
  window_.WaitUntilIdle();
  EXPECT_EQ(ShownFiles(), Texts{u"abc"});
  EXPECT_EQ(window_.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
}

TEST_F(DropTest, AFoldersFilesComeBeforeItsSubfolders) {
  for (const auto name : {u"d/z", u"d/B1", u"d/a10", u"d/a2", u"d/sub10/x", u"d/sub2/deep/y",
                          u"d/sub2/w", u"d/empty2/.gitkeep"}) {
    tree_.AddFile(name, DigestsOfDigits.input);
  }
  tree_.AddFolder(u"d/empty");
  window_.Drop({tree_.Path(u"d")});
  window_.WaitUntilIdle();
  EXPECT_EQ(ShownFiles(), (Texts{u"d\\a2", u"d\\a10", u"d\\B1", u"d\\z", u"d\\sub2\\w",
                                 u"d\\sub2\\deep\\y", u"d\\sub10\\x"}));
  EXPECT_EQ(window_.Column(u"MD5"), Texts(7, std::u16string(DigestsOfDigits.md5)));
}

TEST_F(DropTest, FilesAndFoldersTogetherKeepTheirOrder) {
  tree_.AddFile(u"d/one");
  tree_.AddFile(u"d/two");
  window_.Drop({tree_.AddFile(u"zebra"), tree_.Path(u"d"), tree_.AddFile(u"ant")});
  window_.WaitUntilIdle();
  EXPECT_EQ(ShownFiles(), (Texts{u"zebra", u"d\\one", u"d\\two", u"ant"}));
}

TEST_F(DropTest, AFileInTheListIsNotAddedAgain) {
  tree_.AddFile(u"d/one");
  const std::u16string two = tree_.AddFile(u"d/two");
  window_.Drop({two});
  window_.Drop({tree_.Path(u"d")});
  window_.Drop({two, tree_.Path(u"d"), two});
  window_.Drop({tree_.Path(u"D") + u"\\TWO"});
  window_.WaitUntilIdle();
  EXPECT_EQ(ShownFiles(), (Texts{u"d\\two", u"d\\one"}));
  EXPECT_EQ(window_.List().SelectedIndexes(), std::vector<int>{1}) << "the row added last";
}

TEST_F(DropTest, AnEmptyFolderAddsNothing) {
  window_.Drop({tree_.AddFolder(u"empty")});
  EXPECT_EQ(window_.RowCount(), 0);
  EXPECT_FALSE(window_.IsShown(IDC_CANCEL));
}

TEST_F(DropTest, AMissingFileIsShownAsMissing) {
  window_.Drop({tree_.Path(u"nothing")});
  EXPECT_EQ(window_.Column(u"Status"), Texts{u"Missing"});
}

TEST_F(DropTest, HiddenFilesAreAddedOnlyOnRequest) {
  tree_.AddFile(u"d/seen");
  swr::testing::Hide(tree_.AddFile(u"d/secret"));
  tree_.AddFile(u"d/hidden folder/inside");
  swr::testing::Hide(tree_.Path(u"d/hidden folder"));
  window_.Drop({tree_.Path(u"d")});
  EXPECT_EQ(ShownFiles(), Texts{u"d\\seen"});

  window_.Command(ID_INCLUDE_HIDDEN);
  EXPECT_TRUE(window_.Menu(2)[2].isChecked);
  window_.Drop({tree_.Path(u"d")});
  window_.WaitUntilIdle();
  EXPECT_EQ(ShownFiles(), (Texts{u"d\\seen", u"d\\secret", u"d\\hidden folder\\inside"}));

  window_.Command(ID_INCLUDE_HIDDEN);
  window_.Command(ID_CLEAR_LIST);
  window_.Drop({tree_.Path(u"d")});
  EXPECT_EQ(ShownFiles(), Texts{u"d\\seen"});
}

TEST_F(DropTest, APathBeyond260UnitsIsHashed) {
  const std::u16string path = AddFileWithLongPath(tree_, 700, DigestsOfAbc.input);
  ASSERT_GT(path.size(), 700u);
  window_.Drop({path});
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  EXPECT_EQ(window_.Cell(0, u"Folder") + u'\\' + window_.Cell(0, u"Name"), path);
}

}  // namespace
}  // namespace app::testing
