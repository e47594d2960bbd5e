#include "swr/paths/folder_walk.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

// Relative paths with "/" as the separator on every platform.
using Names = std::vector<std::u16string>;

std::u16string WithSlashes(std::u16string_view relative) {
  std::u16string path(relative);
  for (char16_t& unit : path) {
    if (unit == u'\\') unit = u'/';
  }
  return path;
}

struct Walk {
  bool succeeded = false;
  Names found;
};

Walk WalkTree(const TempTree& tree, const WalkOptions& options = {},
              const std::u16string& pattern = {}) {
  Walk walk;
  walk.succeeded = WalkFolder(
      tree.Root(), options,
      [&](const FoundFile& file) { walk.found.push_back(WithSlashes(file.RelativePath())); },
      pattern);
  return walk;
}

// --- Order --------------------------------------------------------------------------------------

struct OrderCase {
  std::string_view description;
  Names files;
  Names order;
};

const OrderCase orderCases[] = {
    {"runs of digits by their value, letters without case",
     {u"a10", u"a2", u"B1"},
     {u"a2", u"a10", u"B1"}},
    {"long runs of digits", {u"n100", u"n20", u"n3", u"n1000"}, {u"n3", u"n20", u"n100", u"n1000"}},
    {"files before folders", {u"a/inside", u"z"}, {u"z", u"a/inside"}},
    {"digits before letters", {u"b", u"1", u"a"}, {u"1", u"a", u"b"}},
    {"each folder in full before the next",
     {u"b/2", u"b/1", u"a/sub/deep", u"a/x", u"top"},
     {u"top", u"a/x", u"a/sub/deep", u"b/1", u"b/2"}},
    {"folders by the value of their digits too",
     {u"disc 10/t", u"disc 9/t"},
     {u"disc 9/t", u"disc 10/t"}},
    {"equal except for leading zeros: by code unit", {u"a2", u"a02"}, {u"a02", u"a2"}},
    {"a name and its beginning", {u"file10", u"file"}, {u"file", u"file10"}},
};

TEST(FolderWalkTest, VisitsFilesInNaturalOrder) {
  for (const OrderCase& row : orderCases) {
    SCOPED_TRACE(row.description);
    TempTree tree;
    for (const std::u16string& file : row.files) tree.AddFile(file);
    const Walk walk = WalkTree(tree);
    EXPECT_TRUE(walk.succeeded);
    EXPECT_EQ(walk.found, row.order);
  }
}

// --- What is reported ---------------------------------------------------------------------------

TEST(FolderWalkTest, ReportsNothingForAnEmptyFolder) {
  TempTree tree;
  tree.AddFolder(u"empty/deeper");
  const Walk walk = WalkTree(tree);
  EXPECT_TRUE(walk.succeeded);
  EXPECT_TRUE(walk.found.empty());
}

TEST(FolderWalkTest, ReportsPathRelativePathAndSize) {
  TempTree tree;
  tree.AddFile(u"empty");
  tree.AddFile(u"sub/deeper/five", "12345");
  std::vector<FoundFile> found;
  EXPECT_TRUE(WalkFolder(tree.Root(), {}, [&](FoundFile file) { found.push_back(file); }));
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].path, tree.Path(u"empty"));
  EXPECT_EQ(found[0].RelativePath(), u"empty");
  EXPECT_EQ(found[0].size, 0u);
  EXPECT_EQ(found[1].path, tree.Path(u"sub/deeper/five"));
  EXPECT_EQ(found[1].RelativePath(), JoinPath(JoinPath(u"sub", u"deeper"), u"five"));
  EXPECT_EQ(found[1].size, 5u);
}

TEST(FolderWalkTest, ReportsSizesOverFourGigabytes) {
  TempTree tree;
  ResizeFile(tree.AddFile(u"large"), 0x123456789);
  uint64_t size = 0;
  EXPECT_TRUE(WalkFolder(tree.Root(), {}, [&](const FoundFile& file) { size = file.size; }));
  EXPECT_EQ(size, 0x123456789u);
}

TEST(FolderWalkTest, AcceptsARootThatEndsInASeparator) {
  TempTree tree;
  tree.AddFile(u"sub/file");
  const std::u16string root = tree.Path(u"sub") + u"/";
  std::vector<std::u16string> paths;
  EXPECT_TRUE(WalkFolder(root, {}, [&](const FoundFile& found) { paths.push_back(found.path); }));
  EXPECT_EQ(paths, std::vector{root + u"file"});
}

// Sets the current folder of the process for the lifetime of the object.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::u16string& folder) { std::filesystem::current_path(folder); }
  ~CurrentFolder() { std::filesystem::current_path(previous_); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  const std::filesystem::path previous_ = std::filesystem::current_path();
};

TEST(FolderWalkTest, ARelativeRootStartsFromTheCurrentFolder) {
  TempTree tree;
  tree.AddFile(u"sub/1");
  tree.AddFile(u"sub/deeper/2");
  tree.AddFile(u"other/3");
  const CurrentFolder current(tree.Path(u"sub"));
  struct RootCase {
    std::u16string root;
    std::vector<std::u16string> paths;  // the root as given, joined with the names below it
  };
  const std::u16string deeper = JoinPath(u"deeper", u"2");
  const RootCase cases[] = {
      {u".", {JoinPath(u".", u"1"), JoinPath(u".", deeper)}},
      {u"deeper", {deeper}},
      {u"../other", {JoinPath(u"../other", u"3")}},
      {u"absent", {}},
  };
  for (const RootCase& row : cases) {
    SCOPED_TRACE(WideToUtf8(row.root));
    std::vector<std::u16string> paths;
    const bool listed =
        WalkFolder(row.root, {}, [&](const FoundFile& found) { paths.push_back(found.path); });
    EXPECT_EQ(listed, !row.paths.empty());
    EXPECT_EQ(paths, row.paths);
  }
}

struct NameCase {
  std::string_view description;
  std::u16string_view name;
};

const NameCase nameCases[] = {
    {"blanks", u" a  b "},         {"full stop at the end", u"stop."},
    {"emoji", u"\U0001F600"},      {"combining mark", u"e\u0301"},
    {"Chinese", u"\u6587\u4EF6"},  {"punctuation", u"%&'#;=@{}[]"},
    {"no-break space", u"\u00A0"}, {"zero-width space", u"\u200B"},
};

TEST(FolderWalkTest, ReportsNamesUnchanged) {
  for (const NameCase& row : nameCases) {
    SCOPED_TRACE(row.description);
    TempTree tree;
    const std::u16string name(row.name);
    tree.AddFile(name);
    tree.AddFile(u"sub/" + name);
    EXPECT_EQ(WalkTree(tree).found, (Names{name, u"sub/" + name}));
  }
}

// --- Depth --------------------------------------------------------------------------------------

TEST(FolderWalkTest, HasNoDepthLimit) {
  TempTree tree;
  std::u16string deepest = u"d";
  for (int level = 1; level < 150; ++level) deepest += u"/d";
  tree.AddFile(deepest + u"/file");
  EXPECT_EQ(WalkTree(tree).found, Names{deepest + u"/file"});
}

TEST(FolderWalkTest, EntersPathsOver260Units) {
  TempTree tree;
  const std::u16string path = AddFileWithLongPath(tree, 1500, "x");
  std::vector<std::u16string> paths;
  EXPECT_TRUE(
      WalkFolder(tree.Root(), {}, [&](const FoundFile& file) { paths.push_back(file.path); }));
  EXPECT_EQ(paths, std::vector{path});
}

TEST(FolderWalkTest, EntersNoSubfoldersUnlessRecursive) {
  TempTree tree;
  tree.AddFile(u"file");
  tree.AddFile(u"sub/file");
  EXPECT_EQ(WalkTree(tree, {.recursive = false}).found, Names{u"file"});
}

// --- Hidden entries -----------------------------------------------------------------------------

struct HiddenCase {
  bool includeHidden;
  Names found;
};

const HiddenCase hiddenCases[] = {
    {false, {u"plain", u"sub/plain"}},
    {true,
     {u".hidden", u"plain", u".folder/.both", u".folder/plain", u"sub/.hidden", u"sub/plain"}},
};

TEST(FolderWalkTest, ReportsHiddenEntriesOnRequest) {
  TempTree tree;
  for (const std::u16string_view plain : {u"plain", u"sub/plain", u".folder/plain"}) {
    tree.AddFile(plain);
  }
  for (const std::u16string_view hidden : {u".hidden", u"sub/.hidden", u".folder/.both"}) {
    Hide(tree.AddFile(hidden));
  }
  Hide(tree.Path(u".folder"));
  for (const HiddenCase& row : hiddenCases) {
    SCOPED_TRACE(row.includeHidden);
    EXPECT_EQ(WalkTree(tree, {.includeHidden = row.includeHidden}).found, row.found);
  }
}

TEST(FolderWalkTest, WalksAHiddenRoot) {
  TempTree tree;
  tree.AddFile(u".root/file");
  Hide(tree.Path(u".root"));
  size_t count = 0;
  EXPECT_TRUE(WalkFolder(tree.Path(u".root"), {}, [&](const FoundFile&) { ++count; }));
  EXPECT_EQ(count, 1u);
}

// --- Pattern ------------------------------------------------------------------------------------

struct PatternCase {
  std::u16string pattern;
  Names found;
};

const PatternCase patternCases[] = {
    {u"", {u"a.md5", u"b.txt", u"c", u"sub.txt/d.md5", u"sub.txt/e.TXT"}},
    {u"*.md5", {u"a.md5", u"sub.txt/d.md5"}},
    {u"*.txt", {u"b.txt", u"sub.txt/e.TXT"}},
    {u"*.md5;*.txt", {u"a.md5", u"b.txt", u"sub.txt/d.md5", u"sub.txt/e.TXT"}},
    {u"?", {u"c"}},
    {u"*.sha1", {}},
};

TEST(FolderWalkTest, ThePatternAppliesToFilesOnly) {
  TempTree tree;
  for (const std::u16string_view file :
       {u"a.md5", u"b.txt", u"c", u"sub.txt/d.md5", u"sub.txt/e.TXT"}) {
    tree.AddFile(file);
  }
  for (const PatternCase& row : patternCases) {
    SCOPED_TRACE(WideToUtf8(row.pattern));
    const Walk walk = WalkTree(tree, {}, row.pattern);
    EXPECT_TRUE(walk.succeeded);
    EXPECT_EQ(walk.found, row.found);
  }
}

// --- Cancelling ---------------------------------------------------------------------------------

struct CancelCase {
  size_t after;  // number of files
  Names found;
};

const CancelCase cancelCases[] = {
    {0, {}},
    {1, {u"1"}},
    {2, {u"1", u"2"}},
    {3, {u"1", u"2", u"a/3"}},
    {5, {u"1", u"2", u"a/3", u"a/sub/4", u"b/5"}},
};

TEST(FolderWalkTest, StopsWhenCancelled) {
  TempTree tree;
  for (const std::u16string_view file : {u"1", u"2", u"a/3", u"a/sub/4", u"b/5", u"b/6"}) {
    tree.AddFile(file);
  }
  for (const CancelCase& row : cancelCases) {
    SCOPED_TRACE(row.after);
    std::atomic<bool> cancel = row.after == 0;
    Names found;
    EXPECT_TRUE(WalkFolder(tree.Root(), {.cancel = &cancel}, [&](const FoundFile& file) {
      found.push_back(WithSlashes(file.RelativePath()));
      cancel = found.size() == row.after;
    }));
    EXPECT_EQ(found, row.found);
  }
}

// --- Folders that can't be listed ---------------------------------------------------------------

TEST(FolderWalkTest, FailsWithoutARoot) {
  TempTree tree;
  tree.AddFile(u"file");
  for (const std::u16string_view root : {u"absent", u"absent/deeper", u"file"}) {
    SCOPED_TRACE(WideToUtf8(root));
    size_t count = 0;
    EXPECT_FALSE(WalkFolder(tree.Path(root), {}, [&](const FoundFile&) { ++count; }));
    EXPECT_EQ(count, 0u);
  }
}

struct ListingCase {
  std::string_view description;
  uint32_t failing;  // number of the listing, in the order of the walk
  uint32_t code;
  bool succeeded;
  Names found;
};

const ListingCase listingCases[] = {
    {"the root is denied", 1, ErrorAccessDenied, false, {}},
    {"the root is missing", 1, ErrorPathNotFound, false, {}},
    {"the root is on a drive that is not ready", 1, ErrorNotReady, false, {}},
    {"the root is the empty root of a drive", 1, ErrorFileNotFound, true, {}},
    {"the first subfolder is denied", 2, ErrorAccessDenied, true, {u"0", u"b/3"}},
    {"a folder further down is denied", 3, ErrorAccessDenied, true, {u"0", u"a/1", u"b/3"}},
    {"the last subfolder is denied", 4, ErrorAccessDenied, true, {u"0", u"a/1", u"a/sub/2"}},
    {"a subfolder is gone", 2, ErrorPathNotFound, true, {u"0", u"b/3"}},
};

TEST(FolderWalkTest, SkipsASubfolderThatCannotBeListed) {
  TempTree tree;
  for (const std::u16string_view file : {u"0", u"a/1", u"a/sub/2", u"b/3"}) tree.AddFile(file);
  for (const ListingCase& row : listingCases) {
    SCOPED_TRACE(row.description);
    const InstalledFaults faults(
        {{.call = SystemCall::ListDirectory, .nth = row.failing, .code = row.code}});
    const Walk walk = WalkTree(tree);
    EXPECT_EQ(walk.succeeded, row.succeeded);
    EXPECT_EQ(walk.found, row.found);
  }
}

// --- The tree changes during the walk -----------------------------------------------------------

TEST(FolderWalkTest, HoldsNoFolderOpenWhileItReports) {
  TempTree tree;
  tree.AddFile(u"a/file");
  tree.AddFile(u"b/file");
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Root(), {}, [&](const FoundFile& file) {
    found.push_back(WithSlashes(file.RelativePath()));
    RemoveFile(file.path);
    RemoveEmptyFolder(std::u16string(SplitPath(file.path).folder));
  }));
  EXPECT_EQ(found, (Names{u"a/file", u"b/file"}));
  EXPECT_FALSE(IsDirectoryPath(tree.Path(u"a")));
}

TEST(FolderWalkTest, SkipsASubfolderThatIsGone) {
  TempTree tree;
  for (const std::u16string_view file : {u"0", u"b/1"}) tree.AddFile(file);
  tree.AddFolder(u"a");
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Root(), {}, [&](const FoundFile& file) {
    found.push_back(WithSlashes(file.RelativePath()));
    if (found.size() == 1) RemoveEmptyFolder(tree.Path(u"a"));
  }));
  EXPECT_EQ(found, (Names{u"0", u"b/1"}));
}

TEST(FolderWalkTest, ReportsThousandsOfFiles) {
  TempTree tree;
  Names expected;
  for (int i = 0; i < 2000; ++i) {
    const std::string number = std::to_string(i);
    expected.push_back(u"file" + std::u16string(number.begin(), number.end()));
    tree.AddFile(expected.back());
  }
  EXPECT_EQ(WalkTree(tree).found, expected);
}

}  // namespace
}  // namespace swr::testing
