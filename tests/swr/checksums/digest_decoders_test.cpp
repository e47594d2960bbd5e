#include "swr/checksums/digest_decoders.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

using Bytes = std::optional<std::vector<uint8_t>>;

struct DecodeCase {
  std::u16string_view text;
  Bytes bytes;
};

const Bytes None = std::nullopt;

TEST(DecodeHexStrictTest, AcceptsOnlyPairsOfDigits) {
  const DecodeCase cases[] = {
      {u"00", {{0x00}}},
      {u"09afAF", {{0x09, 0xAF, 0xAF}}},
      {u"ffEE", {{0xFF, 0xEE}}},
      {u"", None},
      {u"a", None},
      {u"abc", None},
      {u"0g", None},
      {u"g0", None},
      {u"/0", None},
      {u":0", None},
      {u"@0", None},
      {u"`0", None},
      {u" ab", None},
      {u"ab ", None},
      {u"a b", None},
      {u"0xab", None},
      {u"\uFF11\uFF11", None},  // full-width digits
      {u"\u0131\u0130", None},  // their low bytes are digits
  };
  for (const DecodeCase& test : cases) {
    EXPECT_EQ(DecodeHexStrict(test.text), test.bytes) << WideToUtf8(test.text);
  }
}

TEST(DecodeHexLooseTest, IgnoresSeparatorsAndAPrefix) {
  struct LooseCase {
    std::u16string_view text;
    Bytes rejecting;  // with HyphenRule::Reject
    Bytes ignoring;   // with HyphenRule::Ignore
  };
  const Bytes abcd = {{0xAB, 0xCD}};
  const LooseCase cases[] = {
      {u"abcd", abcd, abcd},   {u"  ABcd\r\n", abcd, abcd}, {u"0xabcd", abcd, abcd},
      {u"0XABCD", abcd, abcd}, {u"ab cd", abcd, abcd},      {u"ab\tcd", abcd, abcd},
      {u"ab:cd", abcd, abcd},  {u"a b c d", abcd, abcd},    {u"::ab::cd::", abcd, abcd},
      {u"ab-cd", None, abcd},  {u"-ab-cd-", None, abcd},    {u"abc d", abcd, abcd},
      {u"0x", None, None},   // too short for a prefix, and x is not a digit
      {u"0x1", None, None},  // an odd count
      {u"x0ab", None, None},   {u"0x0xab", None, None},     {u"", None, None},
      {u" : ", None, None},    {u"---", None, None},        {u"abc", None, None},
      {u"ab,cd", None, None},  {u"ab.cd", None, None},      {u"ab_cd", None, None},
      {u"ab\ncd", None, None}, {u"ab\u00A0cd", None, None},  // only at the ends
  };
  for (const LooseCase& test : cases) {
    EXPECT_EQ(DecodeHexLoose(test.text, HyphenRule::Reject), test.rejecting)
        << WideToUtf8(test.text);
    EXPECT_EQ(DecodeHexLoose(test.text, HyphenRule::Ignore), test.ignoring)
        << WideToUtf8(test.text);
  }
}

// The first rows: RFC 4648, section 10.
TEST(DecodeBase64Test, AcceptsBothAlphabetsWithOrWithoutPadding) {
  const DecodeCase cases[] = {
      {u"Zg==", {{'f'}}},
      {u"Zm8=", {{'f', 'o'}}},
      {u"Zm9v", {{'f', 'o', 'o'}}},
      {u"Zm9vYmFy", {{'f', 'o', 'o', 'b', 'a', 'r'}}},
      {u"Zg", {{'f'}}},
      {u"Zm8", {{'f', 'o'}}},
      {u"Zg=", {{'f'}}},
      {u"Zg=====", {{'f'}}},
      {u" Zm9v\n", {{'f', 'o', 'o'}}},
      {u"+/+/", {{0xFB, 0xFF, 0xBF}}},
      {u"-_-_", {{0xFB, 0xFF, 0xBF}}},
      {u"+_-/", {{0xFB, 0xFF, 0xBF}}},
      {u"AZaz09", {{0x01, 0x96, 0xB3, 0xD3}}},
      {u"Zh", {{'f'}}},  // unused bits
      {u"", None},
      {u"=", None},
      {u"====", None},
      {u"A", None},
      {u"Zm9vY", None},
      {u"Zm=v", None},
      {u"Zm 9v", None},
      {u"Zm9.", None},
      {u"Zm9\u00E9", None},
  };
  for (const DecodeCase& test : cases) {
    EXPECT_EQ(DecodeBase64(test.text), test.bytes) << WideToUtf8(test.text);
  }
}

}  // namespace
}  // namespace swr::testing
