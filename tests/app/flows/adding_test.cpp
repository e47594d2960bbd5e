#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/intake/intake_run.h"
#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

std::u16string AddHiddenFile(TempTree& tree, std::u16string_view relative) {
  const std::u16string path = tree.AddFile(relative, "hidden");
  swr::testing::Hide(path);
  return path;
}

// The names of the rows, in order.
std::vector<std::u16string> Names(const FakeWindow& window) {
  std::vector<std::u16string> names;
  for (const Row& row : window.rows) names.push_back(row.Name());
  return names;
}

using TextList = std::vector<std::u16string>;

TEST(LookUpFileTest, ReadsFileInfo) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"a.bin", "12345");
  const Row row = LookUpFile(path).row;
  EXPECT_EQ(row.Path(), path);
  EXPECT_EQ(row.Name(), u"a.bin");
  EXPECT_EQ(row.Folder(), tree.Root());
  EXPECT_EQ(row.size, 5u);
  EXPECT_NE(row.modified, 0u);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  EXPECT_EQ(row.error, 0u);
  EXPECT_EQ(row.pendingMask, 0u);
}

TEST(LookUpFileTest, AMissingFileBecomesAFailedRow) {
  TempTree tree;
  const Row row = LookUpFile(tree.Path(u"gone.bin")).row;
  EXPECT_EQ(row.status, RowStatus::Failed);
  EXPECT_EQ(row.error, swr::ErrorFileNotFound);
  EXPECT_EQ(row.Name(), u"gone.bin");
  EXPECT_EQ(row.size, 0u);
}

TEST(LookUpFileTest, AnEmptyPathBecomesAFailedRow) {
  const Row row = LookUpFile(u"").row;
  EXPECT_EQ(row.Path(), u"");
  EXPECT_EQ(row.Name(), u"");
  EXPECT_EQ(row.Folder(), u"");
  EXPECT_EQ(row.status, RowStatus::Failed);
}

TEST(AddPathsTest, QueuesEachNewRowForTheSelectedAlgorithms) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a", "1");
  const std::u16string b = tree.AddFile(u"b", "22");
  FakeWindow window;
  window.adding.AddPaths({a, b});
  EXPECT_EQ(Names(window), (TextList{u"a", u"b"}));
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  EXPECT_EQ(window.queue.jobs[1].path->Text(), b);
  EXPECT_EQ(window.queue.jobs[1].size, 2u);
  EXPECT_EQ(window.queue.jobs[1].mask, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.rowCount, 2u);
  EXPECT_NE(window.rows.Find(window.queue.jobs[0].rowId), nullptr);
  EXPECT_EQ(window.desktop.waits, 1);
  EXPECT_FALSE(window.desktop.waiting);
}

TEST(AddPathsTest, TheFirstNewRowIsSelected) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a", "1");
  const std::u16string b = tree.AddFile(u"b", "2");
  const std::u16string c = tree.AddFile(u"c", "3");
  FakeWindow window;
  window.adding.AddPaths({a});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  window.adding.AddPaths({a, b, c});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{1});
  EXPECT_EQ(window.view.focused, 1u);

  window.view.selected = {2};
  window.adding.AddPaths({a});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{2}) << "nothing added, nothing selected";
}

TEST(AddPathsTest, NoPathsChangeNothing) {
  FakeWindow window;
  window.adding.AddPaths({});
  EXPECT_TRUE(window.rows.IsEmpty());
  EXPECT_EQ(window.view.statusText, u"");
}

struct DuplicateCase {
  const char* description;
  std::vector<std::u16string> first;   // below the tree
  std::vector<std::u16string> second;  // below the tree; added in a second call
  TextList names;
};

TEST(AddPathsTest, Duplicates) {
  const DuplicateCase cases[] = {
      {"again", {u"a.bin"}, {u"a.bin"}, {u"a.bin"}},
      {"twice in one call", {u"a.bin", u"a.bin"}, {}, {u"a.bin"}},
      {"in another case, A to Z", {u"a.bin"}, {u"A.BIN"}, {u"a.bin"}},
      {"in another case, another letter", {u"\u00E9"}, {u"\u00C9"}, {u"\u00E9", u"\u00C9"}},
      {"a missing file again", {u"gone"}, {u"gone"}, {u"gone"}},
      {"a folder and a file in it", {u"sub", u"sub/c.bin"}, {}, {u"c.bin"}},
      {"a file and the folder that it is in", {u"sub/c.bin"}, {u"sub"}, {u"c.bin"}},
      {"a folder twice", {u"sub"}, {u"sub"}, {u"c.bin"}},
      {"an empty folder", {u"empty"}, {}, {}},
  };
  TempTree tree;
  tree.AddFile(u"a.bin", "a");
  tree.AddFile(u"\u00E9", "e");
  tree.AddFolder(u"sub");
  tree.AddFile(u"sub/c.bin", "c");
  tree.AddFolder(u"empty");
  for (const DuplicateCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    for (const auto* call : {&test.first, &test.second}) {
      TextList paths;
      for (const std::u16string& path : *call) {
        paths.push_back(tree.Path(path));
      }
      window.adding.AddPaths(paths);
    }
    EXPECT_EQ(Names(window), test.names);
  }
}

// A walked file is looked up by a path that begins with the folder as it was given, but rows have
// full paths.
TEST(AddPathsTest, AFolderInAnotherSpellingAddsItsFilesAgain) {
  TempTree tree;
  tree.AddFolder(u"sub");
  const std::u16string file = tree.AddFile(u"sub/c.bin", "c");
  FakeWindow window;
  window.adding.AddPaths({file});
  window.adding.AddPaths({tree.Path(u"./sub")});
  ASSERT_EQ(window.rows.Size(), 2u);
  EXPECT_EQ(window.rows[1].Path(), window.rows[0].Path()) << "rows hold full paths";
}

TEST(AddPathsTest, ARemovedRowCanBeAddedAgain) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a", "1");
  FakeWindow window;
  window.adding.AddPaths({a});
  window.RemoveRows({0});
  window.adding.AddPaths({a});
  EXPECT_EQ(window.rows.Size(), 1u);
}

TEST(AddPathsTest, AMissingFileIsARowWithoutAJob) {
  TempTree tree;
  FakeWindow window;
  window.adding.AddPaths({tree.Path(u"gone")});
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].status, RowStatus::Failed);
  EXPECT_EQ(window.rows[0].error, swr::ErrorFileNotFound);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_FALSE(window.desktop.timerRuns);
  EXPECT_EQ(window.view.statusText, u"1 file, 0 bytes");
}

TEST(AddPathsTest, RowsFollowTheGivenOrderAndTheWalk) {
  TempTree tree;
  tree.AddFile(u"z.bin", "z");
  tree.AddFolder(u"sub");
  tree.AddFolder(u"sub/a");
  tree.AddFile(u"sub/a/deep", "d");
  tree.AddFile(u"sub/f10", "1");
  tree.AddFile(u"sub/f2", "2");
  FakeWindow window;
  window.adding.AddPaths({tree.Path(u"z.bin"), tree.Path(u"sub")});
  EXPECT_EQ(Names(window), (TextList{u"z.bin", u"f2", u"f10", u"deep"}));
}

TEST(AddPathsTest, HiddenFilesFollowTheOption) {
  TempTree tree;
  tree.AddFolder(u"sub");
  tree.AddFile(u"sub/seen", "1");
  AddHiddenFile(tree, u"sub/.hidden");
  const std::u16string folder = tree.Path(u"sub");
  FakeWindow window;
  window.adding.AddPaths({folder});
  EXPECT_EQ(Names(window), TextList{u"seen"});
  window.commands.Run(ID_INCLUDE_HIDDEN);
  window.adding.AddPaths({folder});
  EXPECT_EQ(Names(window), (TextList{u"seen", u".hidden"}));
}

TEST(AddPathsTest, AHiddenFileGivenByNameIsAlwaysAdded) {
  TempTree tree;
  const std::u16string hidden = AddHiddenFile(tree, u".hidden");
  FakeWindow window;
  window.adding.AddPaths({hidden});
  EXPECT_EQ(Names(window), TextList{u".hidden"});
}

}  // namespace
}  // namespace app::testing
