#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/system/full_path.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

struct FullPathCase {
  std::u16string path;
  std::u16string_view full;
};

const FullPathCase fullPathCases[] = {
    {u"C:\\", u"C:\\"},
    {u"C:\\a\\b", u"C:\\a\\b"},
    {u"C:/a/b", u"C:\\a\\b"},
    {u"C:\\a\\\\b", u"C:\\a\\b"},
    {u"C:\\a\\.\\b\\..\\c", u"C:\\a\\c"},
    {u"C:\\..\\a", u"C:\\a"},
    {u"//host/share/f", u"\\\\host\\share\\f"},
    // Names that the system changes.
    {u"C:\\a\\trail. ", u"C:\\a\\trail"},
    {u"nul", u"\\\\.\\nul"},
};

TEST(FullPathWinTest, ResolvesComponents) {
  for (const FullPathCase& row : fullPathCases) {
    EXPECT_EQ(SystemFullPath(row.path), row.full) << WideToUtf8(row.path);
  }
}

TEST(FullPathWinTest, RefusesABlank) { EXPECT_EQ(SystemFullPath(u" "), std::nullopt); }

}  // namespace
}  // namespace swr::testing
