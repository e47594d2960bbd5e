#include "swr/checksums/listed_path.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

struct ResolveCase {
  std::u16string checksumFile;
  std::u16string listedName;
  std::u16string path;
};

void Check(std::initializer_list<ResolveCase> cases, PathStyle style) {
  for (const ResolveCase& test : cases) {
    EXPECT_EQ(ResolveListedPath(test.checksumFile, test.listedName, style), test.path)
        << WideToUtf8(test.checksumFile) << " lists " << WideToUtf8(test.listedName);
  }
}

TEST(ResolveListedPathTest, FollowsTheRulesOfWindows) {
  Check(
      {
          {u"C:\\d\\SUMS", u"a.txt", u"C:\\d\\a.txt"},
          {u"C:\\d\\SUMS", u"e/a.txt", u"C:\\d\\e\\a.txt"},
          {u"C:\\d\\SUMS", u"e\\a.txt", u"C:\\d\\e\\a.txt"},
          {u"C:\\d\\SUMS", u"./a.txt", u"C:\\d\\.\\a.txt"},
          {u"C:\\d\\SUMS", u"../a.txt", u"C:\\d\\..\\a.txt"},
          {u"C:\\d\\SUMS", u"", u"C:\\d\\"},
          {u"C:/d/SUMS", u"a/b", u"C:/d/a\\b"},
          {u"C:\\d/SUMS", u"a", u"C:\\d/a"},
          {u"SUMS", u"e/a", u"e\\a"},
          {u"", u"a", u"a"},
          // Absolute.
          {u"C:\\d\\SUMS", u"D:\\x\\a", u"D:\\x\\a"},
          {u"C:\\d\\SUMS", u"D:/x/a", u"D:\\x\\a"},
          {u"C:\\d\\SUMS", u"D:a", u"D:a"},
          {u"C:\\d\\SUMS", u"\\\\server\\share\\a", u"\\\\server\\share\\a"},
          {u"C:\\d\\SUMS", u"//server/share/a", u"\\\\server\\share\\a"},
          // On the drive of the checksum file.
          {u"C:\\d\\SUMS", u"/a", u"C:\\a"},
          {u"C:\\d\\SUMS", u"\\x\\a", u"C:\\x\\a"},
          {u"\\\\server\\share\\SUMS", u"\\a", u"\\a"},
          {u"\\\\server\\share\\SUMS", u"a", u"\\\\server\\share\\a"},
          {u"SUMS", u"/a", u"\\a"},
      },
      PathStyle::Windows);
}

TEST(ResolveListedPathTest, FollowsTheRulesOfPosix) {
  Check(
      {
          {u"/d/SUMS", u"a.txt", u"/d/a.txt"},
          {u"/d/SUMS", u"e/a.txt", u"/d/e/a.txt"},
          {u"/d/SUMS", u"e\\a.txt", u"/d/e\\a.txt"},
          {u"/d/SUMS", u"../a.txt", u"/d/../a.txt"},
          {u"/d/SUMS", u"/x/a", u"/x/a"},
          {u"/d/SUMS", u"//x/a", u"//x/a"},
          {u"/d/SUMS", u"D:a", u"/d/D:a"},
          {u"/d/SUMS", u"", u"/d/"},
          {u"SUMS", u"a", u"a"},
          {u"", u"a", u"a"},
      },
      PathStyle::Posix);
}

TEST(MakeRelativePathTest, ShortensPathsBelowTheFolder) {
  struct RelativeCase {
    std::u16string base;
    std::u16string path;
    std::u16string relative;
    PathStyle style = PathStyle::Windows;
  };
  const RelativeCase cases[] = {
      {u"C:\\d", u"C:\\d\\a.txt", u"a.txt"},
      {u"C:\\d", u"C:\\d\\e\\a.txt", u"e\\a.txt"},
      {u"C:\\d\\", u"C:\\d\\a.txt", u"a.txt"},
      {u"C:\\", u"C:\\a.txt", u"a.txt"},
      {u"C:", u"C:\\a.txt", u"a.txt"},
      {u"c:\\D", u"C:\\d\\A.txt", u"A.txt"},
      {u"C:\\\u00C9", u"C:\\\u00E9\\a", u"a"},
      {u"\\\\server\\share", u"\\\\SERVER\\share\\a", u"a"},
      // Not below the folder.
      {u"C:\\d", u"C:\\dd\\a.txt", u"C:\\dd\\a.txt"},
      {u"C:\\d", u"D:\\d\\a.txt", u"D:\\d\\a.txt"},
      {u"C:\\d\\e", u"C:\\d\\a.txt", u"C:\\d\\a.txt"},
      {u"C:\\d", u"C:\\d\\", u"C:\\d\\"},
      {u"C:\\d", u"C:\\d", u"C:\\d"},
      {u"/d", u"/d/e/a", u"e/a", PathStyle::Posix},
      {u"/", u"/a", u"a", PathStyle::Posix},
      {u"/d", u"/d\\a", u"/d\\a", PathStyle::Posix},
  };
  for (const RelativeCase& test : cases) {
    EXPECT_EQ(MakeRelativePath(test.base, test.path, test.style), test.relative)
        << WideToUtf8(test.base) << ", " << WideToUtf8(test.path);
    EXPECT_EQ(RelativePaths(test.base, test.style).Of(test.path), test.relative);
  }
}

TEST(ToForwardSlashesTest, ReplacesBackslashesOnWindowsOnly) {
  EXPECT_EQ(ToForwardSlashes(u"a\\b/c\\", PathStyle::Windows), u"a/b/c/");
  EXPECT_EQ(ToForwardSlashes(u"C:\\a", PathStyle::Windows), u"C:/a");
  EXPECT_EQ(ToForwardSlashes(u"a\\b/c", PathStyle::Posix), u"a\\b/c");
}

}  // namespace
}  // namespace swr::testing
