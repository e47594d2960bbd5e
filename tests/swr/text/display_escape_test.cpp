#include "swr/text/display_escape.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

struct ShownCase {
  const char* description;
  std::u16string name;
  std::u16string shown;
};

void Check(std::initializer_list<ShownCase> cases) {
  for (const ShownCase& test : cases) {
    SCOPED_TRACE(test.description);
    EXPECT_EQ(WideToUtf8(EscapeForDisplay(test.name)), WideToUtf8(test.shown));
  }
}

TEST(EscapeForDisplayTest, EscapesDeceptiveCharacters) {
  Check({
      {"line ends", u"a\r\nb", u"a[U+000D][U+000A]b"},
      {"tab", u"a\tb", u"a[U+0009]b"},
      {"a null character inside", std::u16string(u"a\0b", 3), u"a[U+0000]b"},
      {"bell and delete", u"\a\x7F", u"[U+0007][U+007F]"},
      {"line ends of other systems", u"a\u0085b\u2028c\u2029d", u"a[U+0085]b[U+2028]c[U+2029]d"},
      {"right-to-left override", u"photo\u202Egpj.exe", u"photo[U+202E]gpj.exe"},
      {"embeddings", u"\u202A\u202B\u202C\u202D", u"[U+202A][U+202B][U+202C][U+202D]"},
      {"isolates", u"\u2066\u2067\u2068\u2069", u"[U+2066][U+2067][U+2068][U+2069]"},
      {"marks", u"\u200E\u200F\u061C", u"[U+200E][U+200F][U+061C]"},
      {"no width", u"a\u200Bb\uFEFFc\u2060d\u180E", u"a[U+200B]b[U+FEFF]c[U+2060]d[U+180E]"},
  });
}

TEST(EscapeForDisplayTest, KeepsOrdinaryText) {
  for (const std::u16string name :
       {u"", u"setup.exe", u"~!@#$%^&()[]{}';.,+=-_`", u"\u00E9t\u00E9.txt", u"\u5199\u771F.jpg",
        u"\u05E9\u05DC\u05D5\u05DD.txt", u"\u0645\u0631\u062D\u0628\u0627.txt",
        u"\u0646\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645", u"\U0001F469\u200D\U0001F52C",
        u"no\u00A0break", u"wide\u3000blank", u"thin\u2009blank", u"[U+202E]"}) {
    EXPECT_EQ(WideToUtf8(EscapeForDisplay(name)), WideToUtf8(name));
  }
}

// Compares the result for every code unit with a list written independently.
TEST(EscapeForDisplayTest, EscapesExactlyTheseUnits) {
  std::set<int> expected = {0x61C, 0x180E, 0x200B, 0x200E, 0x200F, 0xFEFF, 0xFFF9, 0xFFFA, 0xFFFB};
  for (int unit = 0; unit < 0xA0; ++unit) {
    if (unit < 0x20 || unit > 0x7E) expected.insert(unit);
  }
  for (int unit = 0x2028; unit <= 0x202E; ++unit) expected.insert(unit);
  for (int unit = 0x2060; unit <= 0x206F; ++unit) expected.insert(unit);
  for (int unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string name(1, static_cast<char16_t>(unit));
    ASSERT_EQ(EscapeForDisplay(name) != name, expected.contains(unit)) << unit;
  }
}

}  // namespace
}  // namespace swr::testing
