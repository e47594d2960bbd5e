#include "swr/paths/path_forms.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

// --- ToLongPath ---------------------------------------------------------------------------------

struct LongPathCase {
  std::string_view description;
  std::u16string path;
  std::optional<std::u16string> full;  // the system's result
  std::u16string longPath;
};

const std::u16string longName(300, u'n');

const LongPathCase longPathCases[] = {
    {"a short path gets the prefix too", u"C:\\a\\b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {"a long path", u"C:\\" + longName, u"C:\\" + longName, u"\\\\?\\C:\\" + longName},
    {"a relative path is made full first", u"b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {"other separators are replaced", u"C:/a/b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {"a root", u"C:\\", u"C:\\", u"\\\\?\\C:\\"},
    {"a network path", u"\\\\host\\share\\f", u"\\\\host\\share\\f", u"\\\\?\\UNC\\host\\share\\f"},
    {"a network path with other separators", u"//host/share/f", u"\\\\host\\share\\f",
     u"\\\\?\\UNC\\host\\share\\f"},
    {"one separator is not a network path", u"\\f", u"C:\\f", u"\\\\?\\C:\\f"},
    // Paths that can't be made full are returned unchanged.
    {"an empty path", u"", std::nullopt, u""},
    {"a path that the system refuses", u"a\\b", std::nullopt, u"a\\b"},
};

TEST(ToLongPathTest, PutsThePrefixBeforeTheFullPath) {
  for (const LongPathCase& row : longPathCases) {
    SCOPED_TRACE(row.description);
    size_t calls = 0;
    const auto makeFull = [&](const std::u16string& path) {
      ++calls;
      EXPECT_EQ(path, row.path);
      return row.full;
    };
    EXPECT_EQ(ToLongPath(row.path, PathStyle::Windows, makeFull), row.longPath);
    EXPECT_EQ(calls, 1u);
  }
}

TEST(ToLongPathTest, LeavesPathsWithAPrefixAlone) {
  for (const std::u16string path : {u"\\\\?\\C:\\a\\..\\b", u"\\\\?\\UNC\\host\\share", u"\\\\?\\",
                                    u"\\\\.\\PhysicalDrive0", u"\\\\.\\", u"\\\\.\\pipe\\p"}) {
    SCOPED_TRACE(WideToUtf8(path));
    const auto makeFull = [](const std::u16string&) -> std::optional<std::u16string> {
      ADD_FAILURE() << "the path is full already";
      return std::nullopt;
    };
    EXPECT_EQ(ToLongPath(path, PathStyle::Windows, makeFull), path);
  }
}

TEST(ToLongPathTest, RecognisesOnlyTheExactPrefix) {
  for (const std::u16string path :
       {u"//?/C:/a", u"\\\\?", u"\\\\?x\\a", u"\\?\\a", u"\\\\x\\?\\"}) {
    SCOPED_TRACE(WideToUtf8(path));
    const auto makeFull = [](const std::u16string&) {
      return std::optional(std::u16string(u"D:"));
    };
    EXPECT_EQ(ToLongPath(path, PathStyle::Windows, makeFull), u"\\\\?\\D:");
  }
}

TEST(ToLongPathTest, ChangesNothingOnPosix) {
  for (const std::u16string path : {u"", u"a", u"/a/../b", u"/a/"}) {
    EXPECT_EQ(ToLongPath(path, PathStyle::Posix), path);
  }
}

// --- JoinPath -----------------------------------------------------------------------------------

struct JoinCase {
  std::u16string_view folder;
  std::u16string_view name;
  std::u16string_view windows;
  std::u16string_view posix;
};

const JoinCase joinCases[] = {
    {u"C:\\a", u"b", u"C:\\a\\b", u"C:\\a/b"},
    {u"a", u"b", u"a\\b", u"a/b"},
    {u"a", u"", u"a\\", u"a/"},
    // A folder that ends in either separator.
    {u"C:\\", u"b", u"C:\\b", u"C:\\b"},
    {u"C:/a/", u"b", u"C:/a/b", u"C:/a/b"},
    {u"/", u"b", u"/b", u"/b"},
    // Without a folder.
    {u"", u"b", u"b", u"b"},
    {u"", u"", u"", u""},
    // Names are not changed.
    {u"a", u"..\\b", u"a\\..\\b", u"a/..\\b"},
    {u"a", u"/b", u"a\\/b", u"a//b"},
    {u"a", u" . ", u"a\\ . ", u"a/ . "},
};

TEST(JoinPathTest, PutsOneSeparatorBetween) {
  for (const JoinCase& row : joinCases) {
    SCOPED_TRACE(WideToUtf8(row.folder) + " and " + WideToUtf8(row.name));
    EXPECT_EQ(JoinPath(row.folder, row.name, PathStyle::Windows), row.windows);
    EXPECT_EQ(JoinPath(row.folder, row.name, PathStyle::Posix), row.posix);
    EXPECT_EQ(JoinPath(row.folder, row.name),
              NativePathStyle == PathStyle::Windows ? row.windows : row.posix);
  }
}

// --- SplitPath ----------------------------------------------------------------------------------

struct SplitCase {
  std::u16string_view path;
  std::u16string_view folder;
  std::u16string_view name;
};

const SplitCase splitCases[] = {
    {u"C:\\a\\b.txt", u"C:\\a", u"b.txt"},
    {u"C:/a/b.txt", u"C:/a", u"b.txt"},
    {u"C:\\a/b.txt", u"C:\\a", u"b.txt"},
    {u"C:/a\\b.txt", u"C:/a", u"b.txt"},
    {u"C:\\b.txt", u"C:", u"b.txt"},
    {u"/b", u"", u"b"},
    {u"b.txt", u"", u"b.txt"},
    {u"a\\", u"a", u""},
    {u"\\", u"", u""},
    {u"", u"", u""},
    {u"\\\\host\\share\\f", u"\\\\host\\share", u"f"},
};

TEST(SplitPathTest, CutsAtTheLastSeparator) {
  for (const SplitCase& row : splitCases) {
    SCOPED_TRACE(WideToUtf8(row.path));
    EXPECT_EQ(SplitPath(row.path).folder, row.folder);
    EXPECT_EQ(SplitPath(row.path).name, row.name);
  }
}

// --- IsDirectoryPath ----------------------------------------------------------------------------

TEST(IsDirectoryPathTest, IsTrueForFoldersOnly) {
  TempTree tree;
  tree.AddFile(u"folder/file");
  EXPECT_TRUE(IsDirectoryPath(tree.Root()));
  EXPECT_TRUE(IsDirectoryPath(tree.Path(u"folder")));
  EXPECT_FALSE(IsDirectoryPath(tree.Path(u"folder/file")));
  EXPECT_FALSE(IsDirectoryPath(tree.Path(u"absent")));
  EXPECT_FALSE(IsDirectoryPath(tree.Path(u"absent/deeper")));
  EXPECT_FALSE(IsDirectoryPath(u""));
}

TEST(IsDirectoryPathTest, AcceptsLongPaths) {
  TempTree tree;
  const std::u16string file = AddFileWithLongPath(tree, 1100, "x");
  EXPECT_FALSE(IsDirectoryPath(file));
  EXPECT_TRUE(IsDirectoryPath(std::u16string(SplitPath(file).folder)));
}

TEST(IsDirectoryPathTest, IsFalseOnFailure) {
  TempTree tree;
  const InstalledFaults faults({{.call = SystemCall::PathInfo, .code = ErrorAccessDenied}});
  EXPECT_FALSE(IsDirectoryPath(tree.Root()));
}

}  // namespace
}  // namespace swr::testing
