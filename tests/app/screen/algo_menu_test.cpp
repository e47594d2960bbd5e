#include "app/screen/algo_menu.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/text/encoding.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

TEST(AlgoMenuTest, WordsAndSeparators) {
  // "-" marks a separator before the item.
  const std::u16string expected =
      u"CRC32\t(fast, not for security)\n"
      u"-MD5\t(not for security)\n"
      u"SHA-1\t(not for security)\n"
      u"SHA-256\n"
      u"SHA-384\n"
      u"SHA-512\n"
      u"-SHA3-256\n"
      u"SHA3-384\n"
      u"SHA3-512\n"
      u"BLAKE3\n"
      u"-XXH64\t(fast, not for security)\n"
      u"XXH3-64\t(fast, not for security)\n"
      u"XXH128\t(fast, not for security)\n";
  const std::u16string legacy =
      u"-MD2\t(not for security)\n"
      u"MD4\t(not for security)\n";
  const auto render = [](bool withLegacy) {
    std::u16string text;
    for (const AlgoMenuItem& item : BuildAlgoMenu(0, withLegacy)) {
      text += (item.separatorBefore ? u"-" : u"") + item.text + u"\n";
    }
    return text;
  };
  EXPECT_EQ(render(false), expected) << swr::WideToUtf8(render(false));
  EXPECT_EQ(render(true), expected + legacy) << swr::WideToUtf8(render(true));
}

TEST(AlgoMenuTest, ChecksTheSelection) {
  const AlgoMask mask = MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md4);
  for (const AlgoMenuItem& item : BuildAlgoMenu(mask, true)) {
    EXPECT_EQ(item.checked, item.algo == AlgoId::Crc32 || item.algo == AlgoId::Md4)
        << swr::WideToUtf8(item.text);
  }
}

}  // namespace
}  // namespace app::testing
