#include "cli/select/name_pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/text/encoding.h"

namespace cli::testing {
namespace {

using swr::PathStyle;

struct PatternCase {
  std::u16string_view path;
  std::u16string_view pattern;
  bool fits;
  PathStyle style = PathStyle::Posix;
};

const PatternCase patternCases[] = {
    // Matched against the name only.
    {u"a.iso", u"*.iso", true},
    {u"f/g/a.iso", u"*.iso", true},
    {u"a.iso", u"a.iso", true},
    {u"a.isox", u"*.iso", false},
    {u"a.ISO", u"*.iso", false},
    {u"a", u"?", true},
    {u"", u"?", false},
    {u"ab", u"a?b", false},
    {u"", u"*", true},
    {u"abXab", u"*ab", true},
    {u"aab", u"*a*b", true},
    {u"mississippi", u"m*iss*p?", true},
    {u"mississippi", u"m*isx*p?", false},
    {u"f/node_modules", u"node_modules", true},
    {u"f/node_modules", u"node_modules/", true},
    // Matched against the whole path.
    {u"f/a", u"f/a", true},
    {u"f/a", u"/f/a", true},
    {u"g/f/a", u"f/a", false},
    {u"g/f/a", u"*/a", false},
    {u"g/a", u"*/a", true},
    {u"a", u"/a", true},
    {u"f/a", u"/a", false},
    {u"f/a", u"/*", false},
    {u"f/a", u"f?a", false},
    {u"f/a", u"/f?a", false},
    // Any number of path components.
    {u"a/b", u"a/**/b", true},
    {u"a/x/b", u"a/**/b", true},
    {u"a/x/y/b", u"a/**/b", true},
    {u"a/xb", u"a/**/b", false},
    {u"b", u"**/b", true},
    {u"x/y/b", u"**/b", true},
    {u"x/yb", u"**/b", false},
    {u"x/y/bc", u"**/b*", true},
    {u"a/x/y", u"a/**", true},
    {u"ab/x", u"a/**", false},
    {u"x/b/y/c/d", u"**/b/*/c/**", true},
    {u"x/b/y/z/c/d", u"**/b/*/c/**", false},
    {u"x/b/y/b/z/c", u"**/b/*/c", true},
    // Sets.
    {u"a1", u"a[0-9]", true},
    {u"ax", u"a[0-9]", false},
    {u"ax", u"a[!0-9]", true},
    {u"a1", u"a[^0-9]", false},
    {u"a]", u"a[]]", true},
    {u"a-", u"a[x-]", true},
    {u"a[", u"a[", true},
    {u"a[b", u"a[b", true},
    {u"ab", u"a[b", false},
    // A backslash is a separator or escapes the next character.
    {u"a*", u"a\\*", true},
    {u"ab", u"a\\*", false},
    {u"f\\a", u"f/a", true, PathStyle::Windows},
    {u"f\\a", u"f\\*", true, PathStyle::Windows},
    {u"f\\g\\a", u"a", true, PathStyle::Windows},
    {u"A.ISO", u"*.iso", true, PathStyle::Windows},
    {u"\u00C9", u"\u00E9", true, PathStyle::Windows},
    {u"\u00C9", u"\u00E9", false, PathStyle::Posix},
};

TEST(NamePatternTest, MatchesAsTheManualSays) {
  for (const PatternCase& row : patternCases) {
    EXPECT_EQ(FitsPattern(row.path, row.pattern, row.style), row.fits)
        << swr::WideToUtf8(row.path) << " against " << swr::WideToUtf8(row.pattern);
  }
}

TEST(NamePatternTest, ManyStarsAreFast) {
  const std::u16string path(3000, u'a');
  std::u16string pattern;
  for (int i = 0; i < 200; ++i) pattern += u"a*";
  EXPECT_FALSE(FitsPattern(path, pattern + u"b"));
  std::u16string steps;
  std::u16string deep;
  for (int i = 0; i < 200; ++i) steps += u"a/";
  for (int i = 0; i < 30; ++i) deep += u"**/a*/";
  EXPECT_FALSE(FitsPattern(steps + u"a", deep + u"b"));
}

}  // namespace
}  // namespace cli::testing
