// Links, and attributes that exist only on Windows.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/folder_link_win.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

using Names = std::vector<std::u16string>;

Names RelativePathsIn(const TempTree& tree, const WalkOptions& options = {}) {
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Root(), options,
                         [&](const FoundFile& file) { found.emplace_back(file.RelativePath()); }));
  return found;
}

TEST(FolderWalkWinTest, NeverEntersALinkToAFolder) {
  TempTree tree;
  tree.AddFile(u"sub/file");
  const FolderLink beside(tree.Path(u"beside"), tree.Path(u"sub"));
  const FolderLink itself(tree.Path(u"itself"), tree.Root());
  if (!beside.IsThere() || !itself.IsThere())
    GTEST_SKIP() << "links to folders can't be created here";
  EXPECT_EQ(RelativePathsIn(tree), Names{u"sub\\file"});
  EXPECT_EQ(RelativePathsIn(tree, {.includeHidden = true}), Names{u"sub\\file"});
}

TEST(FolderWalkWinTest, TreatsSystemEntriesAsHidden) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"system");
  ASSERT_TRUE(SetFileAttributesW(AsWide(ToLongPath(path)), FILE_ATTRIBUTE_SYSTEM));
  EXPECT_EQ(RelativePathsIn(tree), Names{});
  EXPECT_EQ(RelativePathsIn(tree, {.includeHidden = true}), Names{u"system"});
}

TEST(FolderWalkWinTest, AcceptsARootThatEndsInABackslash) {
  TempTree tree;
  tree.AddFile(u"file");
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Root() + u"\\", {},
                         [&](const FoundFile& file) { found.push_back(file.path); }));
  EXPECT_EQ(found, Names{tree.Root() + u"\\file"});
}

TEST(FolderWalkWinTest, ListsTheRootOfADrive) {
  size_t count = 0;
  EXPECT_TRUE(WalkFolder(u"C:\\", {.recursive = false}, [&](const FoundFile&) { ++count; }));
  EXPECT_TRUE(WalkFolder(u"C:/", {.recursive = false}, [&](const FoundFile&) { --count; }));
  EXPECT_EQ(count, 0u) << "both are the same folder";
}

}  // namespace
}  // namespace swr::testing
