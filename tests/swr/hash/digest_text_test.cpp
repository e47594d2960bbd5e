#include "swr/hash/digest_text.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/hasher.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

Digest DigestOf(const std::vector<uint8_t>& bytes) {
  Digest digest{.length = static_cast<uint8_t>(bytes.size())};
  std::copy(bytes.begin(), bytes.end(), digest.bytes.begin());
  return digest;
}

struct HexCase {
  std::vector<uint8_t> bytes;
  std::string_view lower;
  std::string_view upper;
};

const HexCase hexCases[] = {
    {{}, "", ""},
    {{0x00}, "00", "00"},
    {{0x0A}, "0a", "0A"},
    {{0xCB, 0xF4, 0x39, 0x26}, "cbf43926", "CBF43926"},
    {{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}, "0123456789abcdef", "0123456789ABCDEF"},
    {{0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10}, "fedcba9876543210", "FEDCBA9876543210"},
};

TEST(DigestTextTest, WritesTwoDigitsForEachByte) {
  for (const HexCase& row : hexCases) {
    SCOPED_TRACE(row.lower);
    const Digest digest = DigestOf(row.bytes);
    EXPECT_EQ(BytesToHex(row.bytes, false), row.lower);
    EXPECT_EQ(BytesToHex(row.bytes, true), row.upper);
    EXPECT_EQ(DigestToHex(digest, false), row.lower);
    EXPECT_EQ(DigestToHex(digest, true), row.upper);
    EXPECT_EQ(DigestToWideHex(digest, false), Utf8ToWide(row.lower));
    EXPECT_EQ(DigestToWideHex(digest, true), Utf8ToWide(row.upper));
    std::string line = "hash: ";
    AppendHex(row.bytes, true, line);
    EXPECT_EQ(line, "hash: " + std::string(row.upper));
    std::u16string wide = u"hash: ";
    AppendHex(row.bytes, false, wide);
    EXPECT_EQ(wide, u"hash: " + Utf8ToWide(row.lower));
  }
}

TEST(DigestTextTest, WritesTheLongestDigest) {
  Digest digest{.length = 64};
  digest.bytes.fill(0xEF);
  std::string expected;
  for (int i = 0; i < 64; ++i) expected += "ef";
  EXPECT_EQ(DigestToHex(digest, false), expected);
  EXPECT_EQ(DigestToWideHex(digest, false).size(), 128u);
}

TEST(DigestTextTest, IgnoresTheBytesAfterTheDigest) {
  Digest digest{.length = 2};
  digest.bytes.fill(0x11);
  EXPECT_EQ(DigestToHex(digest, false), "1111");
}

TEST(DigestTextTest, WritesXxhashValuesBigEndian) {
  EXPECT_EQ(DigestToHex(HashBytes(AlgoId::Xxh64, {}), false), "ef46db3751d8e999");
}

TEST(DigestTextTest, AcceptsASlot) {
  DigestSlot slot;
  static_cast<Digest&>(slot) = DigestOf({0xAB, 0xCD});
  EXPECT_EQ(DigestToHex(slot, true), "ABCD");
  EXPECT_EQ(DigestToWideHex(slot, true), u"ABCD");
  EXPECT_TRUE(DigestEquals(slot, std::vector<uint8_t>{0xAB, 0xCD}));
}

struct EqualityCase {
  std::string_view description;
  std::vector<uint8_t> digest;
  std::vector<uint8_t> bytes;
  bool equal;
};

const EqualityCase equalityCases[] = {
    {"two empty digests", {}, {}, true},
    {"the same bytes", {1, 2, 3}, {1, 2, 3}, true},
    {"a different first byte", {1, 2, 3}, {0, 2, 3}, false},
    {"a different last byte", {1, 2, 3}, {1, 2, 4}, false},
    {"shorter bytes with the same start", {1, 2, 3}, {1, 2}, false},
    {"longer bytes with the same start", {1, 2, 3}, {1, 2, 3, 0}, false},
    {"an empty digest and a zero", {}, {0}, false},
    {"16 bytes and 20", std::vector<uint8_t>(16, 7), std::vector<uint8_t>(20, 7), false},
};

TEST(DigestTextTest, ComparesLengthAndBytes) {
  for (const EqualityCase& row : equalityCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(DigestEquals(DigestOf(row.digest), row.bytes), row.equal);
  }
}

}  // namespace
}  // namespace swr::testing
