#include "swr/hash/algorithms.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

using enum AlgoId;

// --- The catalogue ------------------------------------------------------------------------------

// Numbers and names are saved and exchanged with other programs: they may never change.
const AlgoInfo expectedRows[] = {
    {Crc32, u"CRC32", "crc32", "CRC32", 4, AlgoGroup::Fast, false},
    {Md5, u"MD5", "md5", "MD5", 16, AlgoGroup::General, false},
    {Sha1, u"SHA-1", "sha1", "SHA1", 20, AlgoGroup::General, false},
    {Sha256, u"SHA-256", "sha256", "SHA256", 32, AlgoGroup::General, true},
    {Sha384, u"SHA-384", "sha384", "SHA384", 48, AlgoGroup::General, true},
    {Sha512, u"SHA-512", "sha512", "SHA512", 64, AlgoGroup::General, true},
    {Sha3_256, u"SHA3-256", "sha3-256", "SHA3-256", 32, AlgoGroup::Modern, true},
    {Sha3_384, u"SHA3-384", "sha3-384", "SHA3-384", 48, AlgoGroup::Modern, true},
    {Sha3_512, u"SHA3-512", "sha3-512", "SHA3-512", 64, AlgoGroup::Modern, true},
    {Blake3, u"BLAKE3", "blake3", "BLAKE3", 32, AlgoGroup::Modern, true},
    {Xxh64, u"XXH64", "xxh64", "XXH64", 8, AlgoGroup::Fast, false},
    {Xxh3_64, u"XXH3-64", "xxh3", "XXH3", 8, AlgoGroup::Fast, false},
    {Xxh128, u"XXH128", "xxh128", "XXH128", 16, AlgoGroup::Fast, false},
    {Md2, u"MD2", "md2", "MD2", 16, AlgoGroup::Legacy, false},
    {Md4, u"MD4", "md4", "MD4", 16, AlgoGroup::Legacy, false},
};

TEST(AlgorithmsTest, HasTheFifteenRows) {
  ASSERT_EQ(AllAlgos().size(), AlgoCount);
  ASSERT_EQ(std::size(expectedRows), AlgoCount);
  for (size_t i = 0; i < AlgoCount; ++i) {
    const AlgoInfo& expected = expectedRows[i];
    SCOPED_TRACE(expected.tag);
    const AlgoInfo& row = AllAlgos()[i];
    EXPECT_EQ(static_cast<size_t>(expected.id), i);
    EXPECT_EQ(row.id, expected.id);
    EXPECT_EQ(row.name, expected.name);
    EXPECT_EQ(row.tag, expected.tag);
    EXPECT_EQ(row.upperTag, expected.upperTag);
    EXPECT_EQ(row.digestSize, expected.digestSize);
    EXPECT_EQ(row.group, expected.group);
    EXPECT_EQ(row.secure, expected.secure);
    EXPECT_EQ(&GetAlgo(expected.id), &row);
  }
}

TEST(AlgorithmsTest, GroupsHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(AlgoGroup::General), 0);
  EXPECT_EQ(static_cast<int>(AlgoGroup::Modern), 1);
  EXPECT_EQ(static_cast<int>(AlgoGroup::Fast), 2);
  EXPECT_EQ(static_cast<int>(AlgoGroup::Legacy), 3);
}

// --- Masks --------------------------------------------------------------------------------------

TEST(AlgoMaskTest, HasTheFourConstants) {
  EXPECT_EQ(AllAlgosMask, 32767u);
  EXPECT_EQ(LegacyAlgoMask, MaskOf(Md2) | MaskOf(Md4));
  EXPECT_EQ(DefaultAlgoMask, MaskOf(Md5) | MaskOf(Sha1) | MaskOf(Sha256));
  EXPECT_EQ(FallbackAlgoMask, MaskOf(Sha256));
}

struct MembersCase {
  AlgoMask mask;
  std::vector<AlgoId> ids;
};

const MembersCase membersCases[] = {
    {0, {}},
    {1, {Crc32}},
    {DefaultAlgoMask, {Md5, Sha1, Sha256}},
    {FallbackAlgoMask, {Sha256}},
    {LegacyAlgoMask, {Md2, Md4}},
    {MaskOf(Md4) | MaskOf(Crc32), {Crc32, Md4}},
    {AllAlgosMask,
     {Crc32, Md5, Sha1, Sha256, Sha384, Sha512, Sha3_256, Sha3_384, Sha3_512, Blake3, Xxh64,
      Xxh3_64, Xxh128, Md2, Md4}},
};

TEST(AlgoMaskTest, ListsItsMembersAscending) {
  for (const MembersCase& row : membersCases) {
    SCOPED_TRACE(row.mask);
    EXPECT_EQ(IdsFromMask(row.mask), row.ids);
    EXPECT_EQ(CountAlgos(row.mask), row.ids.size());
  }
}

struct SavedCase {
  std::string_view description;
  AlgoMask saved;
  bool showLegacy;
  AlgoMask selection;
};

const SavedCase savedCases[] = {
    {"nothing saved", 0, false, 14},
    {"nothing saved, legacy algorithms shown", 0, true, 14},
    {"one algorithm", 0x8, false, 0x8},
    {"all, legacy algorithms shown", 0x7FFF, true, 0x7FFF},
    {"all, legacy algorithms not shown", 0x7FFF, false, 0x1FFF},
    {"only legacy algorithms, shown", 0x6000, true, 0x6000},
    {"only legacy algorithms, not shown", 0x6000, false, 14},
    {"unknown bits with known ones", 0xFFFF8001, false, 0x1},
    {"the lowest unknown bit with a known one", 0x8008, true, 0x8},
    {"only unknown bits", 0xFFFF8000, true, 14},
    {"legacy and unknown bits", 0x80006000, false, 14},
};

TEST(AlgoMaskTest, ValidatesASavedSelection) {
  for (const SavedCase& row : savedCases) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(AlgosFromSaved(row.saved, row.showLegacy), row.selection);
  }
}

// --- Names --------------------------------------------------------------------------------------

struct NormalizedCase {
  std::string_view text;
  std::string_view normalized;
};

const NormalizedCase normalizedCases[] = {
    {"", ""},
    {"SHA-256", "sha256"},
    {"sha_3 - 256", "sha3256"},
    {"---", ""},
    {"AZaz09", "azaz09"},
    {"@[`{", "@[`{"},  // the neighbours of A, Z, a and z
    {"sha/256\t", "sha/256\t"},
    {"\xC3\x89", "\xC3\x89"},
};

TEST(AlgoNameTest, IsNormalized) {
  for (const NormalizedCase& row : normalizedCases) {
    EXPECT_EQ(NormalizeAlgoName(row.text), row.normalized) << row.text;
  }
}

struct NameCase {
  std::string_view name;
  std::optional<AlgoId> id;
};

const NameCase nameCases[] = {
    // In upper or lower case, with any hyphens, underscores and spaces.
    {"SHA-256", Sha256},
    {"sha256", Sha256},
    {"SHA_256", Sha256},
    {"sha 256", Sha256},
    {"Sha-256", Sha256},
    {"-s-h-a-2-5-6-", Sha256},
    {"SHA3-256", Sha3_256},
    {"sha3256", Sha3_256},
    {"SHA3-384", Sha3_384},
    {"SHA3-512", Sha3_512},
    {"XXH3", Xxh3_64},
    {"XXH3-64", Xxh3_64},
    {"XXH128", Xxh128},
    {"md2", Md2},
    // Aliases.
    {"B3", Blake3},
    {"b3", Blake3},
    {"BLAKE3-256", Blake3},
    {"CRC", Crc32},
    {"xxh364", Xxh3_64},
    {"xxh3_64bits", Xxh3_64},
    {"XXH3-64bits", Xxh3_64},
    {"XXH3-128", Xxh128},
    {"SHA", Sha1},
    {"sha-160", Sha1},
    {"SHA2-256", Sha256},
    {"sha2-384", Sha384},
    {"SHA2-512", Sha512},
    // Unknown.
    {"", std::nullopt},
    {"---", std::nullopt},
    {" _-", std::nullopt},
    {"SHA-2", std::nullopt},
    {"SHA3", std::nullopt},
    {"SHA-224", std::nullopt},
    {"MD", std::nullopt},
    {"MD55", std::nullopt},
    {"MD5 sum", std::nullopt},
    {"\tMD5", std::nullopt},
    {"blake2b", std::nullopt},
    {"xxh32", std::nullopt},
    {"xxh", std::nullopt},
};

TEST(AlgoNameTest, IsParsed) {
  for (const NameCase& row : nameCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ParseAlgoName(row.name), row.id);
    EXPECT_EQ(ParseAlgoName(Utf8ToWide(row.name)), row.id);
  }
}

TEST(AlgoNameTest, IsKnownInEachSpellingOfTheCatalogue) {
  for (const AlgoInfo& info : AllAlgos()) {
    SCOPED_TRACE(info.tag);
    EXPECT_EQ(ParseAlgoName(info.tag), info.id);
    EXPECT_EQ(ParseAlgoName(info.upperTag), info.id);
    EXPECT_EQ(ParseAlgoName(info.name), info.id);
  }
}

TEST(AlgoNameTest, IsUnknownWithAnyUnitAbove127) {
  for (const std::u16string_view name :
       {u"MD5\u0080", u"\u00A0MD5", u"MD\u0135", u"\uFF2D\uFF245", u"MD5\uFEFF", u"\u014DD5"}) {
    EXPECT_EQ(ParseAlgoName(name), std::nullopt) << WideToUtf8(name);
  }
}

// --- Digest sizes -------------------------------------------------------------------------------

struct SizeCase {
  size_t bytes;
  std::vector<AlgoId> ids;
};

const SizeCase sizeCases[] = {
    {4, {Crc32}},
    {8, {Xxh64, Xxh3_64}},
    {16, {Md5, Xxh128, Md4, Md2}},
    {20, {Sha1}},
    {32, {Sha256, Sha3_256, Blake3}},
    {48, {Sha384, Sha3_384}},
    {64, {Sha512, Sha3_512}},
};

TEST(DigestSizeTest, HasCandidatesInOrder) {
  for (const SizeCase& row : sizeCases) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(AlgosForDigestSize(row.bytes), row.ids);
    EXPECT_TRUE(IsDigestSizeKnown(row.bytes));
    for (const AlgoId id : row.ids) EXPECT_EQ(GetAlgo(id).digestSize, row.bytes);
  }
}

TEST(DigestSizeTest, IsUnknownOtherwise) {
  for (const size_t bytes : {0u, 1u, 3u, 5u, 12u, 24u, 28u, 33u, 63u, 65u, 128u, 260u}) {
    EXPECT_TRUE(AlgosForDigestSize(bytes).empty()) << bytes;
    EXPECT_FALSE(IsDigestSizeKnown(bytes)) << bytes;
  }
}

}  // namespace
}  // namespace swr::testing
