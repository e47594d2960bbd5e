#include "swr/text/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "swr/system/text_services.h"
#include "swr/text/decimal_text.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

// --- TrimText -----------------------------------------------------------------------------------

struct TrimCase {
  std::string_view description;
  std::u16string_view text;
  std::u16string_view trimmed;
};

const TrimCase trimCases[] = {
    {"nothing", u"", u""},
    {"no blanks", u"abc", u"abc"},
    {"blanks at both ends", u"  abc \t", u"abc"},
    {"line ends", u"\r\nabc\r\n", u"abc"},
    {"blanks inside stay", u" a \t b ", u"a \t b"},
    {"one unit", u" x ", u"x"},
    // Each of the seven blanks.
    {"tab", u"\u0009x\u0009", u"x"},
    {"line feed", u"\u000Ax\u000A", u"x"},
    {"carriage return", u"\u000Dx\u000D", u"x"},
    {"space", u"\u0020x\u0020", u"x"},
    {"no-break space", u"\u00A0x\u00A0", u"x"},
    {"zero-width space", u"\u200Bx\u200B", u"x"},
    {"byte-order mark", u"\uFEFFx\uFEFF", u"x"},
    // Blanks only.
    {"byte-order mark, zero-width space and space", u"\uFEFF\u200B ", u""},
    {"one space", u" ", u""},
    // Other spaces are text.
    {"vertical tab", u"\u000Bx\u000B", u"\u000Bx\u000B"},
    {"form feed", u"\u000Cx\u000C", u"\u000Cx\u000C"},
    {"next line", u"\u0085x\u0085", u"\u0085x\u0085"},
    {"en quad", u"\u2000x\u2000", u"\u2000x\u2000"},
    {"zero-width joiner", u"\u200Dx\u200D", u"\u200Dx\u200D"},
    {"line separator", u"\u2028x\u2028", u"\u2028x\u2028"},
    {"ideographic space", u"\u3000x\u3000", u"\u3000x\u3000"},
    {"a null", std::u16string_view(u"\0x\0", 3), std::u16string_view(u"\0x\0", 3)},
};

TEST(TrimTextTest, RemovesSevenKindsOfBlanks) {
  for (const TrimCase& row : trimCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(TrimText(row.text), row.trimmed);
  }
}

TEST(TrimTextTest, ReturnsAViewOfTheSameText) {
  const std::u16string text = u"  abc ";
  const std::u16string_view trimmed = TrimText(text);
  EXPECT_EQ(trimmed.data(), text.data() + 2);
  EXPECT_EQ(trimmed.size(), 3u);
}

// --- Case ---------------------------------------------------------------------------------------

struct EqualityCase {
  std::u16string_view a;
  std::u16string_view b;
  bool equal;
};

const EqualityCase equalityCases[] = {
    {u"", u"", true},
    {u"Hash.MD5", u"hASH.md5", true},
    {u"\u00C9", u"\u00E9", true},
    {u"\u044F", u"\u042F", true},
    {u"\u00DF", u"\u00DF", true},
    {u"\u00DF", u"ss", false},
    {u"\u00DF", u"\u1E9E", false},
    {u"a", u"", false},
    {u"a", u"ab", false},
    {u"a", u"b", false},
    {u"e", u"\u00E9", false},
    {u"k", u"\u212A", false},  // the kelvin sign is an upper-case letter of its own
    {u"C:\\a\u00E9.txt", u"c:\\A\u00C9.TXT", true},
    {u"C:\\a\u00E9.txt", u"c:\\A\u00C9.TXS", false},
    {u"a[", u"a{", false},  // differ by the same bit as two cases of a letter
    {u"a@", u"a`", false},
};

TEST(EqualsNoCaseTest, IgnoresCaseOnly) {
  for (const EqualityCase& row : equalityCases) {
    SCOPED_TRACE(WideToUtf8(row.a) + " and " + WideToUtf8(row.b));
    EXPECT_EQ(EqualsNoCase(row.a, row.b), row.equal);
    EXPECT_EQ(EqualsNoCase(row.b, row.a), row.equal);
  }
}

struct SuffixCase {
  std::u16string_view text;
  std::u16string_view suffix;
  bool ends;
};

const SuffixCase suffixCases[] = {
    {u"file.MD5", u".md5", true},
    {u".md5", u".MD5", true},
    {u"caf\u00E9", u"F\u00C9", true},
    {u"abc", u"", true},
    {u"", u"", true},
    {u"md5", u".md5", false},
    {u"", u"a", false},
    {u"file.md5x", u".md5", false},
    {u"file.md5", u"file", false},
};

TEST(EndsWithNoCaseTest, ComparesTheLastUnits) {
  for (const SuffixCase& row : suffixCases) {
    SCOPED_TRACE(WideToUtf8(row.text) + " and " + WideToUtf8(row.suffix));
    EXPECT_EQ(EndsWithNoCase(row.text, row.suffix), row.ends);
  }
}

struct LowerCase {
  std::u16string_view text;
  std::u16string_view lower;
};

const LowerCase lowerCases[] = {
    {u"", u""},
    {u"C:\\Dir\\FILE.Txt", u"c:\\dir\\file.txt"},
    {u"AZ az 09", u"az az 09"},
    {u"@[`{", u"@[`{"},
    // Other letters keep their case.
    {u"\u00C9\u00E9", u"\u00C9\u00E9"},
    {u"\u042F", u"\u042F"},
    {u"\u0130", u"\u0130"},
    {u"\u212A", u"\u212A"},  // the kelvin sign, whose lower case is k
    {u"\uFF21", u"\uFF21"},
};

TEST(ToLowerTextTest, ChangesAToZOnly) {
  for (const LowerCase& row : lowerCases) {
    EXPECT_EQ(ToLowerText(row.text), row.lower) << WideToUtf8(row.text);
  }
}

// --- Numbers ------------------------------------------------------------------------------------

TEST(DecimalTextTest, WritesPlainDigits) {
  EXPECT_EQ(DecimalText(0), u"0");
  EXPECT_EQ(DecimalText(1234567), u"1234567");
  EXPECT_EQ(DecimalText(UINT64_MAX), u"18446744073709551615");
}

// --- CaseHash -----------------------------------------------------------------------------------

bool HashesAgree(char16_t a, char16_t b) {
  const std::u16string_view textA(&a, 1);
  const std::u16string_view textB(&b, 1);
  return EqualsNoCase(textA, textB) == (CaseHash(textA) == CaseHash(textB));
}

TEST(CaseHashTest, UnitsHaveTheSameHashExactlyIfEqualIgnoringCase) {
  int disagreements = 0;
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const auto a = static_cast<char16_t>(unit);
    // Its upper case, the usual distances between the cases of a letter, and all of ASCII.
    if (!HashesAgree(a, SystemUpperUnit(a))) ++disagreements;
    for (const int distance : {1, 2, 8, 16, 26, 32, 37, 40, 48, 63, 64, 80}) {
      if (!HashesAgree(a, static_cast<char16_t>(unit + static_cast<uint32_t>(distance)))) {
        ++disagreements;
      }
    }
    for (char16_t ascii = 0; ascii < 128; ++ascii) {
      if (!HashesAgree(a, ascii)) ++disagreements;
    }
  }
  EXPECT_EQ(disagreements, 0);
}

TEST(CaseHashTest, HashesWholePaths) {
  EXPECT_EQ(CaseHash(u"C:\\\u00C4 \u0416\\a.TXT"), CaseHash(u"c:\\\u00E4 \u0436\\A.txt"));
  EXPECT_NE(CaseHash(u"C:\\a"), CaseHash(u"C:/a"));
  EXPECT_NE(CaseHash(u""), CaseHash(u"a"));
  EXPECT_NE(CaseHash(u"ab"), CaseHash(u"ba"));
}

}  // namespace
}  // namespace swr::testing
