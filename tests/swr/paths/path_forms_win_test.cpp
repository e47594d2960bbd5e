// Long paths, with the full path from the system.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/paths/path_forms.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

struct LongPathCase {
  std::u16string path;
  std::u16string_view longPath;
};

const LongPathCase longPathCases[] = {
    {u"C:\\a.txt", u"\\\\?\\C:\\a.txt"},
    {u"C:\\a\\..\\b.txt", u"\\\\?\\C:\\b.txt"},
    {u"C:/a/b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:\\", u"\\\\?\\C:\\"},
    {u"\\\\host\\share\\f", u"\\\\?\\UNC\\host\\share\\f"},
    {u"//host/share/./f", u"\\\\?\\UNC\\host\\share\\f"},
    {u"\\\\?\\C:\\a\\..\\b", u"\\\\?\\C:\\a\\..\\b"},
    {u"\\\\.\\PhysicalDrive0", u"\\\\.\\PhysicalDrive0"},
    {u"", u""},
};

TEST(ToLongPathWinTest, UsesTheSystemsFullPath) {
  for (const LongPathCase& row : longPathCases) {
    EXPECT_EQ(ToLongPath(row.path), row.longPath) << WideToUtf8(row.path);
  }
}

TEST(ToLongPathWinTest, AcceptsAnyLength) {
  const std::u16string longest = u"C:\\" + std::u16string(LongestFullPath - 4, u'n');
  EXPECT_TRUE(ToLongPath(longest) == u"\\\\?\\" + longest);
  const std::u16string tooLong = longest + u"nn";
  EXPECT_TRUE(ToLongPath(tooLong) == tooLong) << "it can't be made full";
}

TEST(ToLongPathWinTest, StartsFromTheCurrentFolder) {
  EXPECT_EQ(ToLongPath(u"b.txt"), u"\\\\?\\" + JoinPath(SystemFullPath(u".").value(), u"b.txt"));
}

}  // namespace
}  // namespace swr::testing
