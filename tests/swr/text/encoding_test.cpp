#include "swr/text/encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace swr::testing {
namespace {

std::u16string Units(std::initializer_list<int> units) {
  std::u16string text;
  for (const int unit : units) text.push_back(static_cast<char16_t>(unit));
  return text;
}

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes.push_back(static_cast<char>(value));
  return bytes;
}

// --- DecodeTextBytes ----------------------------------------------------------------------------

struct DecodeCase {
  std::string_view description;
  std::string bytes;
  std::u16string text;
};

const DecodeCase decodeCases[] = {
    {"nothing", "", u""},
    // UTF-8 with a byte-order mark.
    {"only the mark", Bytes({0xEF, 0xBB, 0xBF}), u""},
    {"a mark and text", Bytes({0xEF, 0xBB, 0xBF, 0xC3, 0xA9}), u"\u00E9"},
    {"two marks", Bytes({0xEF, 0xBB, 0xBF, 0xEF, 0xBB, 0xBF, 'A'}), u"\uFEFFA"},
    // UTF-16, little-endian.
    {"only the little-endian mark", Bytes({0xFF, 0xFE}), u""},
    {"the little-endian mark and an odd byte", Bytes({0xFF, 0xFE, 0x41}), u""},
    {"little-endian", Bytes({0xFF, 0xFE, 0x41, 0x00}), u"A"},
    {"little-endian with an odd byte", Bytes({0xFF, 0xFE, 0x41, 0x00, 0x42}), u"A"},
    {"little-endian above 255", Bytes({0xFF, 0xFE, 0x87, 0x65}), u"\u6587"},
    {"little-endian with a pair", Bytes({0xFF, 0xFE, 0x3D, 0xD8, 0x00, 0xDE}), u"\U0001F600"},
    {"little-endian with lone surrogates", Bytes({0xFF, 0xFE, 0x00, 0xDE, 0x3D, 0xD8, 0x41, 0x00}),
     Units({0xDE00, 0xD83D, 'A'})},
    {"little-endian with two marks", Bytes({0xFF, 0xFE, 0xFF, 0xFE, 0x41, 0x00}), u"\uFEFFA"},
    {"little-endian with the other mark", Bytes({0xFF, 0xFE, 0xFE, 0xFF}), Units({0xFFFE})},
    // UTF-16, big-endian.
    {"only the big-endian mark", Bytes({0xFE, 0xFF}), u""},
    {"the big-endian mark and an odd byte", Bytes({0xFE, 0xFF, 0x00}), u""},
    {"big-endian", Bytes({0xFE, 0xFF, 0x00, 0x41}), u"A"},
    {"big-endian above 255", Bytes({0xFE, 0xFF, 0x65, 0x87}), u"\u6587"},
    {"big-endian with a null", Bytes({0xFE, 0xFF, 0x00, 0x00, 0x00, 0x41}), Units({0, 'A'})},
    // Without a mark: UTF-8 if valid.
    {"ASCII", "abc\r\n", u"abc\r\n"},
    {"UTF-8", Bytes({0xC3, 0xA9}), u"\u00E9"},
    {"UTF-8 of four bytes", Bytes({0xF0, 0x9F, 0x98, 0x80}), u"\U0001F600"},
    {"a null inside", Bytes({'a', 0, 'b'}), Units({'a', 0, 'b'})},
    {"UTF-16 without a mark is not recognised", Bytes({'A', 0, 'B', 0}), Units({'A', 0, 'B', 0})},
    {"a truncated mark", Bytes({0xEF, 0xBB}), u"\u00EF\u00BB"},
    // Otherwise the system's code page; see text_services_test.cpp.
    {"one byte of a code page", Bytes({0xE9}), u"\u00E9"},
    {"one such byte makes the whole text ANSI", Bytes({0xC3, 0xA9, ' ', 0xE9}),
     u"\u00C3\u00A9 \u00E9"},
    {"half of a UTF-16 mark", Bytes({0xFF}), u"\u00FF"},
    {"a null in such text", Bytes({0xE9, 0, 'b'}), Units({0xE9, 0, 'b'})},
};

TEST(DecodeTextBytesTest, DetectsTheEncoding) {
  for (const DecodeCase& row : decodeCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(DecodeTextBytes(row.bytes), row.text);
  }
}

TEST(DecodeTextBytesTest, AByteOrderMarkSelectsUtf8) {
  const std::u16string text = DecodeTextBytes(Bytes({0xEF, 0xBB, 0xBF, 'a', 0xFF, 'z'}));
  EXPECT_NE(text.find(u'\uFFFD'), text.npos);
  EXPECT_EQ(text.find(u'\u00FF'), text.npos);
  EXPECT_EQ(text.front(), u'a');
  EXPECT_EQ(text.back(), u'z');
}

TEST(DecodeTextBytesTest, AcceptsLongText) {
  std::string bytes;
  std::u16string text;
  for (int i = 0; i < 100000; ++i) {
    bytes += "\xC3\xA9x";
    text += u"\u00E9x";
  }
  EXPECT_TRUE(DecodeTextBytes(bytes) == text);
  EXPECT_TRUE(DecodeTextBytes("\xEF\xBB\xBF" + bytes) == text);
}

// --- The two conversions ------------------------------------------------------------------------

struct ConversionCase {
  std::string_view description;
  std::string bytes;
  std::u16string text;
};

const ConversionCase conversionCases[] = {
    {"nothing", "", u""},
    {"ASCII", "abc", u"abc"},
    {"accents", "\xC3\xA9t\xC3\xA9", u"\u00E9t\u00E9"},
    {"Chinese", "\xE6\x96\x87", u"\u6587"},
    {"emoji", "\xF0\x9F\x98\x80", u"\U0001F600"},
    {"a mark is text like any other", "\xEF\xBB\xBFx", u"\uFEFFx"},
    {"a null", Bytes({'a', 0, 'b'}), Units({'a', 0, 'b'})},
};

TEST(Utf8Test, RoundTripsThroughText) {
  for (const ConversionCase& row : conversionCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(Utf8ToWide(row.bytes), row.text);
    EXPECT_EQ(WideToUtf8(row.text), row.bytes);
    std::string line = "name: ";
    AppendUtf8(row.text, line);
    EXPECT_EQ(line, "name: " + std::string(row.bytes));
  }
}

TEST(Utf8Test, ReplacesInvalidInput) {
  EXPECT_NE(Utf8ToWide("a\xFFz").find(u'\uFFFD'), std::u16string::npos);
  EXPECT_EQ(WideToUtf8(Units({'a', 0xD800, 'z'})), "a\xEF\xBF\xBDz");
  EXPECT_EQ(WideToUtf8(Units({0xDFFF})), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace swr::testing
