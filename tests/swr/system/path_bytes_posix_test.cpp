#include "swr/system/path_bytes_posix.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

namespace swr::testing {
namespace {

template <typename Text>
std::string Hex(const Text& text) {
  std::ostringstream stream;
  for (const auto unit : text) {
    const auto value = static_cast<std::make_unsigned_t<typename Text::value_type>>(unit);
    stream << std::hex << std::setw(2) << std::setfill('0') << static_cast<unsigned>(value) << ' ';
  }
  return stream.str();
}

std::u16string Units(std::initializer_list<int> units) {
  std::u16string text;
  for (const int unit : units) text.push_back(static_cast<char16_t>(unit));
  return text;
}

struct BytesCase {
  std::string_view description;
  std::string_view bytes;
  std::u16string text;
};

const BytesCase bytesCases[] = {
    {"nothing", "", u""},
    {"ASCII", "abc", u"abc"},
    {"two bytes", "\xC3\xA9", u"\u00E9"},
    {"three bytes", "\xE6\x96\x87", u"\u6587"},
    {"four bytes", "\xF0\x9F\x98\x80", u"\U0001F600"},
    {"the last code point", "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    // Bytes that are not UTF-8 are escaped one by one.
    {"a lone byte", "a\xE9z", Units({'a', 0xDCE9, 'z'})},
    {"a sequence that is cut off", "\xE6\x96", Units({0xDCE6, 0xDC96})},
    {"a sequence that is cut short", "\xE6\x96z", Units({0xDCE6, 0xDC96, 'z'})},
    {"a continuation", "\x80", Units({0xDC80})},
    {"an overlong form", "\xC0\xAF", Units({0xDCC0, 0xDCAF})},
    {"an overlong three-byte form", "\xE0\x9F\xBF", Units({0xDCE0, 0xDC9F, 0xDCBF})},
    {"an overlong four-byte form", "\xF0\x8F\xBF\xBF", Units({0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF})},
    {"beyond the last code point", "\xF4\x90\x80\x80", Units({0xDCF4, 0xDC90, 0xDC80, 0xDC80})},
    {"a byte that never occurs", "\xFF", Units({0xDCFF})},
    // Lone surrogates encoded in three bytes.
    {"a high surrogate", "\xED\xA0\xBD", Units({0xD83D})},
    {"a low surrogate", "\xED\xB8\x80", Units({0xDE00})},
    {"the low surrogate before the escaped bytes", "\xED\xB1\xBF", Units({0xDC7F})},
    {"the low surrogate after the escaped bytes", "\xED\xB4\x80", Units({0xDD00})},
    {"low before high", "\xED\xB8\x80\xED\xA0\xBD", Units({0xDE00, 0xD83D})},
    // Except those used for escaped bytes, and two that would form a pair.
    {"the first of the escaped bytes", "\xED\xB2\x80", Units({0xDCED, 0xDCB2, 0xDC80})},
    {"the last of the escaped bytes", "\xED\xB3\xBF", Units({0xDCED, 0xDCB3, 0xDCBF})},
    {"high before high", "\xED\xA0\xBD\xED\xA0\xBD", Units({0xDCED, 0xDCA0, 0xDCBD, 0xD83D})},
    {"high before a lone byte", "\xED\xA0\xBD\xE9", Units({0xDCED, 0xDCA0, 0xDCBD, 0xDCE9})},
    {"high before a character", "\xED\xA0\xBD\xC3\xA9", Units({0xD83D, 0xE9})},
    {"high before a pair", "\xED\xA0\xBD\xF0\x9F\x98\x80", Units({0xD83D, 0xD83D, 0xDE00})},
    {"high before low", "\xED\xA0\xBD\xED\xB8\x80", Units({0xDCED, 0xDCA0, 0xDCBD, 0xDE00})},
};

TEST(PathBytesTest, AreConvertedToTextAndBack) {
  for (const BytesCase& row : bytesCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(Hex(PathTextFromBytes(row.bytes)), Hex(row.text));
    EXPECT_EQ(Hex(PathBytesFromText(row.text)), Hex(std::string(row.bytes)));
  }
}

void ExpectRoundTrip(const std::string& bytes, std::set<std::u16string>& texts) {
  const std::u16string text = PathTextFromBytes(bytes);
  ASSERT_EQ(Hex(PathBytesFromText(text)), Hex(bytes));
  ASSERT_TRUE(texts.insert(text).second) << "two names with the same text: " << Hex(bytes);
}

TEST(PathBytesTest, LoseNothingInAnyNameOfOneOrTwoBytes) {
  std::set<std::u16string> texts;
  for (int first = 0; first < 256; ++first) {
    ExpectRoundTrip({static_cast<char>(first)}, texts);
    for (int second = 0; second < 256; ++second) {
      ExpectRoundTrip({static_cast<char>(first), static_cast<char>(second)}, texts);
    }
  }
}

// Sequences of three bytes that begin with ED encode surrogates, the difficult case.
TEST(PathBytesTest, LoseNothingAmongSurrogates) {
  std::set<std::u16string> texts;
  for (int second = 0x90; second <= 0xC0; ++second) {
    for (int third = 0x7F; third <= 0xC0; ++third) {
      const std::string surrogate = {'\xED', static_cast<char>(second), static_cast<char>(third)};
      ExpectRoundTrip(surrogate, texts);
      for (const std::string_view other :
           {"\xED\xA0\x80", "\xED\xAF\xBF", "\xED\xB0\x80", "\xED\xB2\x80", "\xED\xB3\xBF",
            "\xED\xBF\xBF", "\xED", "\xED\xB2", "\xB2\x80"}) {
        ExpectRoundTrip(surrogate + std::string(other), texts);
        ExpectRoundTrip(std::string(other) + surrogate + "x", texts);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(PathBytesTest, LoseNothingInRandomNames) {
  // Lead bytes, continuation bytes and the bytes of surrogates.
  constexpr std::string_view likely =
      "a/\x7F\x80\xA0\xB0\xB2\xB3\xBF\xC0\xC2\xDF\xE0\xED\xED\xED\xEF\xF0\xF4\xF5\xFF\x9F\x8F\x90";
  std::mt19937 random(8);
  for (int round = 0; round < 100000; ++round) {
    std::string bytes(random() % 12, '\0');
    for (char& byte : bytes) {
      byte = random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
    }
    ASSERT_EQ(Hex(PathBytesFromText(PathTextFromBytes(bytes))), Hex(bytes));
  }
}

// Text from elsewhere, such as a checksum file, may contain surrogates in any order. It becomes
// some name, which then survives conversion unchanged.
TEST(PathBytesTest, AnyTextBecomesAStableName) {
  std::mt19937 random(16);
  for (int round = 0; round < 100000; ++round) {
    std::u16string text(random() % 8, u'\0');
    for (char16_t& unit : text) {
      unit = static_cast<char16_t>(random() % 2 == 0 ? 0xD800 + random() % 0x800 : random());
    }
    const std::string bytes = PathBytesFromText(text);
    ASSERT_EQ(Hex(PathBytesFromText(PathTextFromBytes(bytes))), Hex(bytes)) << Hex(text);
  }
}

}  // namespace
}  // namespace swr::testing
