// Links, and names that only POSIX systems allow.
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "swr/paths/folder_walk.h"
#include "swr/system/path_bytes_posix.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

void AddLink(const TempTree& tree, std::u16string_view name, const char* target) {
  ASSERT_EQ(symlink(target, PathBytesFromText(tree.Path(name)).c_str()), 0);
}

std::vector<std::u16string> RelativePathsIn(const TempTree& tree, const WalkOptions& options = {}) {
  std::vector<std::u16string> found;
  EXPECT_TRUE(WalkFolder(tree.Root(), options,
                         [&](const FoundFile& file) { found.emplace_back(file.RelativePath()); }));
  return found;
}

using Names = std::vector<std::u16string>;

TEST(FolderWalkPosixTest, NeverEntersALinkToAFolder) {
  TempTree tree;
  tree.AddFile(u"sub/file");
  AddLink(tree, u"beside", "sub");
  AddLink(tree, u"sub/itself", ".");
  AddLink(tree, u"sub/parent", "..");
  AddLink(tree, u"sub/.hidden", "..");
  EXPECT_EQ(RelativePathsIn(tree), Names{u"sub/file"});
  EXPECT_EQ(RelativePathsIn(tree, {.includeHidden = true}), Names{u"sub/file"});
}

TEST(FolderWalkPosixTest, WalksARootThatIsALink) {
  TempTree tree;
  tree.AddFile(u"sub/file");
  AddLink(tree, u"link", "sub");
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Path(u"link"), {},
                         [&](const FoundFile& file) { found.push_back(file.path); }));
  EXPECT_EQ(found, Names{tree.Path(u"link/file")});
}

TEST(FolderWalkPosixTest, ReportsALinkToAFileAsAFile) {
  TempTree tree;
  tree.AddFile(u"target", "12345");
  AddLink(tree, u"link", "target");
  AddLink(tree, u"dangling", "gone");
  std::vector<FoundFile> found;
  EXPECT_TRUE(WalkFolder(tree.Root(), {}, [&](FoundFile file) { found.push_back(file); }));
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[0].RelativePath(), u"dangling");
  EXPECT_EQ(found[0].size, 0u);
  EXPECT_EQ(found[1].RelativePath(), u"link");
  EXPECT_EQ(found[1].size, 5u);
}

// File systems allow trees that are so deep that recursion would overflow the stack.
TEST(FolderWalkPosixTest, ADeepTreeNeedsNoMoreStack) {
  TempTree tree;
  std::u16string relative;
  for (int level = 0; level < 900; ++level) relative += u"d/";
  tree.AddFile(relative + u"file");
  const auto walk = [](void* root) -> void* {
    auto* paths = new Names;
    WalkFolder(*static_cast<const std::u16string*>(root), {},
               [&](const FoundFile& file) { paths->emplace_back(file.RelativePath()); });
    return paths;
  };
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 128 * 1024), 0);
  pthread_t thread;
  auto root = tree.Root();
  ASSERT_EQ(pthread_create(&thread, &attributes, walk, &root), 0);
  void* found = nullptr;
  ASSERT_EQ(pthread_join(thread, &found), 0);
  pthread_attr_destroy(&attributes);
  const std::unique_ptr<Names> paths(static_cast<Names*>(found));
  EXPECT_EQ(*paths, Names{relative + u"file"});
}

// A link of unknown type is reported as a file, which fails later if it is not one; a link to a
// folder is never entered.
TEST(FolderWalkPosixTest, ALinkOfUnknownTypeIsAFile) {
  TempTree tree;
  tree.AddFile(u"folder/inside");
  AddLink(tree, u"to folder", "folder");
  AddLink(tree, u"to file", "folder/inside");
  const Names withFolderLink = {u"to file", u"to folder", u"folder/inside"};
  EXPECT_EQ(RelativePathsIn(tree, {.withSizes = false}), (Names{u"to file", u"folder/inside"}));
  const InstalledFaults faults({{.call = SystemCall::EntryInfo, .nth = 0, .code = 5}});
  EXPECT_EQ(RelativePathsIn(tree, {.withSizes = false}), withFolderLink);
  EXPECT_EQ(faults.Count(SystemCall::EntryInfo), 2u);
}

// Windows distinguishes names that differ only in case if a folder is configured for that; Wine
// never does.
TEST(FolderWalkPosixTest, OrdersNamesThatDifferInCaseByCodeUnit) {
  TempTree tree;
  for (const std::u16string_view name : {u"a2", u"A2", u"a1", u"b", u"B"}) tree.AddFile(name);
  EXPECT_EQ(RelativePathsIn(tree), (Names{u"a1", u"A2", u"a2", u"B", u"b"}));
}

TEST(FolderWalkPosixTest, ReportsNamesUnchanged) {
  constexpr char16_t loneSurrogates[] = {u'a', 0xD83D, u'b', 0xDE00, 0};
  constexpr char16_t invalidBytes[] = {u'x', 0xDCFF, 0xDCE9, 0};
  for (const std::u16string_view name :
       {std::u16string_view(loneSurrogates), std::u16string_view(invalidBytes),
        std::u16string_view(u"a\\b:c*d?e\n"), std::u16string_view(u"blank ")}) {
    TempTree tree;
    const std::u16string path = std::u16string(name) + u"/" + std::u16string(name);
    tree.AddFile(path);
    EXPECT_EQ(RelativePathsIn(tree), Names{path});
  }
}

}  // namespace
}  // namespace swr::testing
