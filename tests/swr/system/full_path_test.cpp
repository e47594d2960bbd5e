#include "swr/system/full_path.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/paths/path_forms.h"

namespace swr::testing {
namespace {

TEST(FullPathTest, RefusesAnEmptyPath) { EXPECT_EQ(SystemFullPath(u""), std::nullopt); }

TEST(FullPathTest, StartsFromTheCurrentFolder) {
  const std::u16string current = SystemFullPath(u".").value();
  EXPECT_EQ(SystemFullPath(u"absent"), JoinPath(current, u"absent"));
  EXPECT_EQ(SystemFullPath(u"./absent/../other"), JoinPath(current, u"other"));
  EXPECT_EQ(SystemFullPath(u".."), std::u16string(SplitPath(current).folder));
}

TEST(FullPathTest, LeavesAFullPathAsItIs) {
  const std::u16string full = SystemFullPath(u"absent").value();
  EXPECT_EQ(SystemFullPath(full), full);
}

// Exactly LongestFullPath is not tested: Windows fails one unit earlier, at the limit of its
// counted strings.
TEST(FullPathTest, LimitsTheLength) {
  const std::u16string root = SystemFullPath(u"/").value();
  const auto fullOf = [&](size_t units) {
    return SystemFullPath(root + std::u16string(units - root.size(), u'n'));
  };
  for (const size_t units : {size_t{1022}, size_t{1023}, size_t{1024}, size_t{1025}, size_t{5000},
                             LongestFullPath - 1}) {
    SCOPED_TRACE(units);
    ASSERT_TRUE(fullOf(units));
    EXPECT_EQ(fullOf(units)->size(), units);
  }
  EXPECT_FALSE(fullOf(LongestFullPath + 1));
  EXPECT_FALSE(fullOf(100000));
}

}  // namespace
}  // namespace swr::testing
