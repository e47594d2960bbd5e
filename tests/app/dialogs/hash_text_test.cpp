#include "app/dialogs/hash_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "swr/text/encoding.h"

namespace app::testing {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(TextToHashBytesTest, EncodingAndBreaks) {
  struct Case {
    std::u16string text;
    TextForm form;
    Bytes bytes;
  };
  const TextForm utf8Lf = {};
  const TextForm utf8Windows = {.lfBreaks = false};
  const TextForm utf16Lf = {.utf16 = true};
  const Case cases[] = {
      {u"", utf8Lf, {}},
      {u"a", utf8Lf, {'a'}},
      {u"\u00E9", utf8Lf, {0xC3, 0xA9}},
      {u"\U0001F600", utf8Lf, {0xF0, 0x9F, 0x98, 0x80}},
      {u"a\r\nb", utf8Lf, {'a', '\n', 'b'}},
      {u"a\r\nb", utf8Windows, {'a', '\r', '\n', 'b'}},
      // A CR alone stays, and an LF alone does not become CR LF.
      {u"a\rb\r", utf8Lf, {'a', '\r', 'b', '\r'}},
      {u"a\nb", utf8Windows, {'a', '\n', 'b'}},
      {u"\r\r\n\n", utf8Lf, {'\r', '\n', '\n'}},
      // A break at the end.
      {u"", {.finalBreak = true}, {'\n'}},
      {u"a", {.finalBreak = true}, {'a', '\n'}},
      {u"a", {.lfBreaks = false, .finalBreak = true}, {'a', '\r', '\n'}},
      {u"a\r\n", {.finalBreak = true}, {'a', '\n', '\n'}},
      {u"a\r", {.finalBreak = true}, {'a', '\r', '\n'}},
      // UTF-16, little-endian and without a byte-order mark.
      {u"a\u00E9", utf16Lf, {'a', 0, 0xE9, 0}},
      {u"\U0001F600", utf16Lf, {0x3D, 0xD8, 0x00, 0xDE}},
      {u"a\r\nb", utf16Lf, {'a', 0, '\n', 0, 'b', 0}},
      {u"a", {.utf16 = true, .lfBreaks = false, .finalBreak = true}, {'a', 0, '\r', 0, '\n', 0}},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(TextToHashBytes(test.text, test.form), test.bytes) << swr::WideToUtf8(test.text);
  }
}

constexpr swr::AlgoMask Sha256 = swr::MaskOf(swr::AlgoId::Sha256);

TEST(HashTextResultTest, OneLineForEachAlgorithmAndTheCount) {
  struct Case {
    std::u16string text;
    TextForm form;
    swr::AlgoMask mask;
    bool uppercase;
    std::u16string result;
  };
  const Case cases[] = {
      {u"",
       {},
       Sha256,
       false,
       u"SHA-256:\te3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855\r\n\r\n"
       u"0 bytes"},
      {u"a", {}, swr::MaskOf(swr::AlgoId::Crc32), false, u"CRC32:\te8b7be43\r\n\r\n1 byte"},
      {u"a", {}, swr::MaskOf(swr::AlgoId::Crc32), true, u"CRC32:\tE8B7BE43\r\n\r\n1 byte"},
      {u"a",
       {.finalBreak = true},
       swr::MaskOf(swr::AlgoId::Md5),
       false,
       u"MD5:\t60b725f10c9c85c70d97880dfe8191b3\r\n\r\n2 bytes"},
      {u"a",
       {.lfBreaks = false, .finalBreak = true},
       swr::MaskOf(swr::AlgoId::Md5),
       false,
       u"MD5:\t933222b19ff3e7ea5f65517ea1f7d57e\r\n\r\n3 bytes"},
      {u"abc",
       {},
       swr::MaskOf(swr::AlgoId::Blake3) | swr::MaskOf(swr::AlgoId::Md5),
       false,
       u"MD5:\t900150983cd24fb0d6963f7d28e17f72\r\n"
       u"BLAKE3:\t6437b3ac38465133ffb63b75273a8db548c558465d79db03fd359c6cd5bd9d85\r\n\r\n"
       u"3 bytes"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(HashTextResult(test.text, test.form, test.mask, test.uppercase), test.result);
  }
}

TEST(HashTextResultTest, OnlyTheDigestsAreCopied) {
  EXPECT_EQ(DigestLines(u"MD5:\t00\r\nSHA-1:\t11\r\n\r\n3 bytes"), u"MD5:\t00\r\nSHA-1:\t11");
  EXPECT_EQ(DigestLines(u"MD5:\t00"), u"MD5:\t00");
  EXPECT_EQ(DigestLines(u""), u"");
}

}  // namespace
}  // namespace app::testing
