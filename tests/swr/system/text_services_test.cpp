#include "swr/system/text_services.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

// --- Equality without case ----------------------------------------------------------------------

struct EqualityCase {
  std::u16string_view a;
  std::u16string_view b;
  bool equal;
};

const EqualityCase equalityCases[] = {
    {u"", u"", true},
    {u"abc", u"ABC", true},
    {u"aBc1", u"AbC1", true},
    {u"\u00E9t\u00E9", u"\u00C9T\u00C9", true},
    {u"\u044F", u"\u042F", true},
    {u"\u03C9", u"\u03A9", true},
    {u"abc", u"abd", false},
    {u"abc", u"ab", false},
    {u"e", u"\u00E9", false},
    {u"[", u"{", false},
    // No letter equals two letters, and nothing is normalized.
    {u"\u00DF", u"SS", false},
    {u"\u00DF", u"\u1E9E", false},
    {u"\u00E9", u"e\u0301", false},
};

TEST(TextServicesTest, ComparesWithoutCase) {
  for (const EqualityCase& row : equalityCases) {
    SCOPED_TRACE(WideToUtf8(row.a) + " and " + WideToUtf8(row.b));
    EXPECT_EQ(SystemEqualsNoCase(row.a, row.b), row.equal);
    EXPECT_EQ(SystemEqualsNoCase(row.b, row.a), row.equal);
  }
}

TEST(TextServicesTest, ComparesOnlyTheContentOfTheViews) {
  const std::u16string_view text = u"abcX";
  EXPECT_TRUE(SystemEqualsNoCase(text.substr(0, 3), u"ABC"));
}

// --- Natural order ------------------------------------------------------------------------------

// In ascending order. Only digits and letters: systems differ in punctuation.
const std::u16string ascending[] = {u"1",   u"2",    u"10",     u"a",       u"a1",   u"a2", u"a9",
                                    u"a10", u"a10b", u"a10b2",  u"a10b11",  u"a100", u"ab", u"B",
                                    u"b1",  u"file", u"file99", u"file100", u"z"};

TEST(TextServicesTest, OrdersDigitsByValueAndLettersWithoutCase) {
  for (size_t i = 0; i < std::size(ascending); ++i) {
    for (size_t k = 0; k < std::size(ascending); ++k) {
      const int order = SystemCompareNatural(ascending[i], ascending[k]);
      EXPECT_EQ(order < 0, i < k) << WideToUtf8(ascending[i]) << ", " << WideToUtf8(ascending[k]);
      EXPECT_EQ(order > 0, i > k) << WideToUtf8(ascending[i]) << ", " << WideToUtf8(ascending[k]);
    }
  }
}

TEST(TextServicesTest, OrdersEqualNamesAsEqual) {
  EXPECT_EQ(SystemCompareNatural(u"", u""), 0);
  EXPECT_EQ(SystemCompareNatural(u"Name2", u"name2"), 0);
}

// --- Patterns -----------------------------------------------------------------------------------

struct PatternCase {
  std::u16string name;
  std::u16string patterns;
  bool matches;
};

const PatternCase patternCases[] = {
    {u"a.md5", u"*.md5", true},
    {u"A.MD5", u"*.md5", true},
    {u"a.md5", u"*.MD5", true},
    {u"a.md5", u"a.md5", true},
    {u"a.md5x", u"*.md5", false},
    {u"a.txt", u"*.md5", false},
    // Several patterns.
    {u"a.txt", u"*.md5;*.txt", true},
    {u"a.txt", u"*.md5; *.txt", true},
    {u"a.txt", u"*.md5;*.sha1", false},
    // Single units.
    {u"a", u"?", true},
    {u"ab", u"?", false},
    {u"abc", u"a?c", true},
    {u"ac", u"a?c", false},
    // Stars that need backtracking.
    {u"", u"*", true},
    {u"abc", u"*", true},
    {u"aXbXc", u"a*c", true},
    {u"aXbXcd", u"a*c", false},
    {u"abab", u"*ab", true},
    {u"aab", u"*a*b", true},
    {u"mississippi", u"m*iss*p?", true},
    {u"mississippi", u"m*isx*p?", false},
    // Matches every name, with or without an extension.
    {u"Makefile", u"*.*", true},
    {u"a.b", u"*.*", true},
    // Brackets are not special.
    {u"[a]", u"[a]", true},
    {u"a", u"[a]", false},
    {u"a", u"", false},
};

TEST(TextServicesTest, MatchesPatterns) {
  for (const PatternCase& row : patternCases) {
    SCOPED_TRACE(WideToUtf8(row.name) + " against " + WideToUtf8(row.patterns));
    EXPECT_EQ(SystemMatchesPattern(row.name, row.patterns), row.matches);
  }
}

// --- UTF-8 --------------------------------------------------------------------------------------

struct ValidityCase {
  std::string_view description;
  std::string_view bytes;
  bool valid;
};

const ValidityCase validityCases[] = {
    {"nothing", "", true},
    {"ASCII", "abc", true},
    {"a null", std::string_view("a\0b", 3), true},
    {"two bytes", "\xC3\xA9", true},
    {"three bytes", "\xE6\x96\x87", true},
    {"four bytes", "\xF0\x9F\x98\x80", true},
    {"the last code point", "\xF4\x8F\xBF\xBF", true},
    {"a lone byte of a code page", "\xE9", false},
    {"a lone continuation", "\x80", false},
    {"a sequence that is cut off", "abc\xE6\x96", false},
    {"a sequence that is cut short", "\xE6\x96z", false},
    {"an overlong slash", "\xC0\xAF", false},
    {"an overlong three-byte form", "\xE0\x80\xAF", false},
    {"a surrogate", "\xED\xA0\x80", false},
    {"beyond the last code point", "\xF4\x90\x80\x80", false},
    {"a byte that never occurs", "\xFF", false},
};

TEST(TextServicesTest, ValidatesUtf8) {
  for (const ValidityCase& row : validityCases) {
    EXPECT_EQ(SystemIsValidUtf8(row.bytes), row.valid) << row.description;
  }
}

TEST(TextServicesTest, DecodesAnythingAsUtf8) {
  for (const ValidityCase& row : validityCases) {
    SCOPED_TRACE(row.description);
    const std::u16string text = SystemDecodeUtf8(row.bytes);
    EXPECT_EQ(text.find(u'\uFFFD') == text.npos, row.valid);
    if (row.valid) {
      EXPECT_EQ(SystemEncodeUtf8(text), row.bytes);
    }
  }
  EXPECT_EQ(SystemDecodeUtf8("a\xFFz").front(), u'a');
  EXPECT_EQ(SystemDecodeUtf8("a\xFFz").back(), u'z');
}

TEST(TextServicesTest, EncodesLoneSurrogatesAsReplacements) {
  constexpr char16_t high[] = {u'a', 0xD83D, u'b', 0};
  constexpr char16_t low[] = {0xDE00, 0};
  EXPECT_EQ(SystemEncodeUtf8(high),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(SystemEncodeUtf8(low), "\xEF\xBF\xBD");
  EXPECT_EQ(SystemEncodeUtf8(u"\U0001F600"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(SystemEncodeUtf8(u""), "");
}

// --- The code page of the system ----------------------------------------------------------------

// Bytes that are the same in windows-1252, which the test prefix and the Linux build use, and in
// the other western code pages.
TEST(TextServicesTest, DecodesTheAnsiCodePage) {
  EXPECT_EQ(SystemDecodeAnsi(""), u"");
  EXPECT_EQ(SystemDecodeAnsi("abc"), u"abc");
  EXPECT_EQ(SystemDecodeAnsi("\xE9t\xE9"), u"\u00E9t\u00E9");
  EXPECT_EQ(SystemDecodeAnsi("\x80"), u"\u20AC");
  std::string every;
  for (int byte = 0; byte < 256; ++byte) every.push_back(static_cast<char>(byte));
  EXPECT_EQ(SystemDecodeAnsi(every).size(), 256u) << "each byte becomes one unit";
}

// --- Error messages -----------------------------------------------------------------------------

TEST(TextServicesTest, HasMessagesForWellKnownErrors) {
  for (const uint32_t error : {2u, 3u, 5u, 32u, 50u, 267u}) {
    EXPECT_FALSE(SystemErrorText(error).empty()) << error;
  }
}

TEST(TextServicesTest, HasNoMessagesForUnknownErrors) {
  for (const uint32_t error : {3735928559u, 0xFFFFFFFFu}) {
    EXPECT_EQ(SystemErrorText(error), u"") << error;
  }
}

}  // namespace
}  // namespace swr::testing
