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
    // Only whole steps of one or two full stops mean anything.
    {u"/a/...", u"/a/..."},
    {u"/a/..b/.c/d.", u"/a/..b/.c/d."},
    // What means something elsewhere is a name here.
    {u"/a\\..\\b", u"/a\\..\\b"},
    {u"/C:/a ", u"/C:/a "},
};

TEST(FullPathPosixTest, ResolvesSteps) {
  for (const FullPathCase& row : fullPathCases) {
    EXPECT_EQ(SystemFullPath(row.path), row.full) << WideToUtf8(row.path);
  }
}

TEST(FullPathPosixTest, TakesTheLongestPath) {
  const std::u16string longest = u'/' + std::u16string(LongestFullPath - 1, u'n');
  EXPECT_TRUE(SystemFullPath(longest) == longest);
  EXPECT_FALSE(SystemFullPath(longest + u'n'));
  EXPECT_TRUE(SystemFullPath(longest + u"/./") == longest) << "only the result counts";
}

TEST(FullPathPosixTest, KnowsTheCurrentFolder) {
  EXPECT_EQ(SystemFullPath(u"."), PathTextFromBytes(std::filesystem::current_path().native()));
}

}  // namespace
}  // namespace swr::testing
