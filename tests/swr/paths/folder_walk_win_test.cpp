// Links, and attributes that exist only on Windows.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

using Names = std::vector<std::u16string>;

// A link to the folder `target`, which is relative to the tree's root, for the lifetime of the
// object. Wine reports success but neither creates nor removes links. But it shows links of the
// host system as reparse points, and runs the host's programs that create and remove them.
class FolderLink {
 public:
  FolderLink(const TempTree& tree, const std::wstring& name, const std::wstring& target)
      : root_(tree.Root()), name_(name), path_(tree.Path(FromWide(name))) {
    CreateSymbolicLinkW(AsWide(path_), target.c_str(), SYMBOLIC_LINK_FLAG_DIRECTORY);
    if (!Exists()) RunBelow(L"ln", L"ln -s \"" + target + L"\" \"" + name_ + L"\"");
    for (int round = 0; round < 500 && !Exists(); ++round) Sleep(10);
    EXPECT_TRUE(Exists());
    EXPECT_NE(GetFileAttributesW(AsWide(path_)) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
  }
  ~FolderLink() {
    RemoveDirectoryW(AsWide(path_));
    if (Exists()) RunBelow(L"rm", L"rm \"" + name_ + L"\"");
    for (int round = 0; round < 500 && Exists(); ++round) Sleep(10);
    EXPECT_FALSE(Exists());
  }
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;

 private:
  bool Exists() const { return GetFileAttributesW(AsWide(path_)) != INVALID_FILE_ATTRIBUTES; }

  // Windows calls can't wait for a process of the host.
  void RunBelow(const std::wstring& program, std::wstring command) const {
    STARTUPINFOW startup = {.cb = sizeof startup};
    PROCESS_INFORMATION process = {};
    ASSERT_TRUE(CreateProcessW((L"Z:\\bin\\" + program).c_str(), command.data(), nullptr, nullptr,
                               FALSE, 0, nullptr, AsWide(root_), &startup, &process))
        << GetLastError();
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }

  const std::u16string root_;
  const std::wstring name_;
  const std::u16string path_;
};

Names RelativePathsIn(const TempTree& tree, const WalkOptions& options = {}) {
  Names found;
  EXPECT_TRUE(WalkFolder(tree.Root(), options,
                         [&](const FoundFile& file) { found.push_back(file.relativePath); }));
  return found;
}

TEST(FolderWalkWinTest, NeverEntersALinkToAFolder) {
  TempTree tree;
  tree.AddFile(u"sub/file");
  const FolderLink beside(tree, L"beside", L"sub");
  const FolderLink itself(tree, L"itself", L".");
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
