#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "swr/system/full_path.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

struct FullPathCase {
  std::u16string path;
  std::u16string_view full;
};

const FullPathCase fullPathCases[] = {
    {u"/", u"/"},
    {u"/a/b", u"/a/b"},
    {u"/a/b/", u"/a/b"},
    {u"//a///b", u"/a/b"},
    {u"/./a/./b/.", u"/a/b"},
    {u"/a/../b", u"/b"},
    {u"/a/b/../../c", u"/c"},
    {u"/..", u"/"},
    {u"/../../a", u"/a"},
    // Only "." and ".." are special.
    {u"/a/...", u"/a/..."},
    {u"/a/..b/.c/d.", u"/a/..b/.c/d."},
    // What is special on Windows is an ordinary name here.
    {u"/a\\..\\b", u"/a\\..\\b"},
    {u"/C:/a ", u"/C:/a "},
};

TEST(FullPathPosixTest, ResolvesComponents) {
  for (const FullPathCase& row : fullPathCases) {
    EXPECT_EQ(SystemFullPath(row.path), row.full) << WideToUtf8(row.path);
  }
}

TEST(FullPathPosixTest, AcceptsTheLongestPath) {
  const std::u16string longest = u'/' + std::u16string(LongestFullPath - 1, u'n');
  EXPECT_TRUE(SystemFullPath(longest) == longest);
  EXPECT_FALSE(SystemFullPath(longest + u'n'));
  EXPECT_TRUE(SystemFullPath(longest + u"/./") == longest) << "the limit applies to the result";
}

TEST(FullPathPosixTest, KnowsTheCurrentFolder) {
  EXPECT_EQ(SystemFullPath(u"."), PathTextFromBytes(std::filesystem::current_path().native()));
}

}  // namespace
}  // namespace swr::testing
