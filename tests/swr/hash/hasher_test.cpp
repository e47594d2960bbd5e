#include "swr/hash/hasher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "swr/hash/digest_text.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/digest_vectors.h"

namespace swr::testing {
namespace {

std::span<const uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

std::string HexOf(AlgoId id, std::string_view input) {
  return DigestToHex(HashBytes(id, AsBytes(input)), false);
}

const DigestVectors& VectorsOf(AlgoId id) {
  const auto* row = std::ranges::find(digestVectors, id, &DigestVectors::id);
  EXPECT_NE(row, std::end(digestVectors));
  return *row;
}

// --- Published test vectors ---------------------------------------------------------------------

struct PublishedDigest {
  AlgoId id;
  std::string input;
  std::string_view digest;
  std::string_view source;
};

const PublishedDigest publishedDigests[] = {
    {AlgoId::Md2, "", "8350e5a3e24c153df2275c9f80692773", "RFC 1319, A.5"},
    {AlgoId::Md2, "abc", "da853b0d3f88d99b30283a69e6ded6bb", "RFC 1319, A.5"},
    {AlgoId::Md2, "message digest", "ab4f496bfb2a530b219ff33031fe06b0", "RFC 1319, A.5"},
    {AlgoId::Md4, "", "31d6cfe0d16ae931b73c59d7e0c089c0", "RFC 1320, A.5"},
    {AlgoId::Md4, "abc", "a448017aaf21d8525fc10ae87aa6729d", "RFC 1320, A.5"},
    {AlgoId::Md4, "message digest", "d9130a8164549fe818874806e1c7014b", "RFC 1320, A.5"},
    {AlgoId::Md5, "", "d41d8cd98f00b204e9800998ecf8427e", "RFC 1321, A.5"},
    {AlgoId::Md5, "abc", "900150983cd24fb0d6963f7d28e17f72", "RFC 1321, A.5"},
    {AlgoId::Md5, "message digest", "f96b697d7cb7938d525a2f31aaf161d0", "RFC 1321, A.5"},
    {AlgoId::Sha1, "abc", "a9993e364706816aba3e25717850c26c9cd0d89d", "FIPS 180, example"},
    {AlgoId::Sha1, "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
     "84983e441c3bd26ebaae4aa1f95129e5e54670f1", "FIPS 180, example"},
    {AlgoId::Sha1, std::string(1000000, 'a'), "34aa973cd4c4daa4f61eeb2bdbad27316534016f",
     "FIPS 180, example"},
    {AlgoId::Sha256, "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
     "FIPS 180, example"},
    {AlgoId::Sha256, std::string(1000000, 'a'),
     "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0", "FIPS 180, example"},
    {AlgoId::Sha384, "abc",
     "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c8"
     "25a7",
     "FIPS 180, example"},
    {AlgoId::Sha512, "abc",
     "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23a3fe"
     "ebbd454d4423643ce80e2a9ac94fa54ca49f",
     "FIPS 180, example"},
    {AlgoId::Sha3_256, "", "a7ffc6f8bf1ed76651c14756a061d662f580ff4de43b49fa82d80a4b80f8434a",
     "FIPS 202, example of 0 bits"},
    {AlgoId::Sha3_256, std::string(200, '\xA3'),
     "79f38adec5c20307a98ef76e8324afbfd46cfd81b22e3973c65fa1bd9de31787",
     "FIPS 202, example of 1600 bits"},
    {AlgoId::Sha3_384, std::string(200, '\xA3'),
     "1881de2ca7e41ef95dc4732b8f5f002b189cc1e42b74168ed1732649ce1dbcdd76197a31fd55ee989f2d7050dd47"
     "3e8f",
     "FIPS 202, example of 1600 bits"},
    {AlgoId::Sha3_512, std::string(200, '\xA3'),
     "e76dfad22084a8b1467fcf2ffa58361bec7628edf5f3fdc0e4805dc48caeeca81b7c13c30adf52a3659584739a2d"
     "f46be589c51ca1a4a8416df6545a1ce8ba00",
     "FIPS 202, example of 1600 bits"},
    {AlgoId::Blake3, "", "af1349b9f5f9a1a6a0404dea36dcc9499bcb25c9adc112b7cc9a93cae41f3262",
     "BLAKE3 test_vectors.json"},
    {AlgoId::Blake3, CountingBytes(1),
     "2d3adedff11b61f14c886e35afa036736dcd87a74d27b5c1510225d0f592e213",
     "BLAKE3 test_vectors.json"},
    {AlgoId::Blake3, CountingBytes(1024),
     "42214739f095a406f3fc83deb889744ac00df831c10daa55189b5d121c855af7",
     "BLAKE3 test_vectors.json"},
    {AlgoId::Blake3, CountingBytes(1025),
     "d00278ae47eb27b34faecf67b4fe263f82d5412916c1ffd97c8cb7fb814b8444",
     "BLAKE3 test_vectors.json"},
    {AlgoId::Crc32, "123456789", "cbf43926", "catalogue of CRC algorithms, check value"},
    {AlgoId::Xxh64, "", "ef46db3751d8e999", "xxHash documentation"},
    {AlgoId::Xxh3_64, "", "2d06800538d394c2", "xxHash, sanity test"},
    {AlgoId::Xxh128, "", "99aa06d3014798d86001c324468d497f", "xxHash, sanity test"},
};

TEST(HasherTest, GivesThePublishedDigests) {
  for (const PublishedDigest& row : publishedDigests) {
    SCOPED_TRACE(std::string(GetAlgo(row.id).tag) + " of \"" + row.input.substr(0, 40) + "\", " +
                 std::string(row.source));
    EXPECT_EQ(HexOf(row.id, row.input), row.digest);
  }
}

TEST(HasherTest, PadsSha3AroundTheBlockLength) {
  for (const Sha3BlockVectors& row : sha3BlockVectors) {
    SCOPED_TRACE(GetAlgo(row.id).tag);
    const std::string block = CountingBytes(row.rate);
    EXPECT_EQ(HexOf(row.id, std::string_view(block).substr(0, row.rate - 1)), row.ofRateLessOne);
    EXPECT_EQ(HexOf(row.id, block), row.ofRate);
  }
}

// --- Each algorithm -----------------------------------------------------------------------------

class EachAlgorithmTest : public ::testing::TestWithParam<AlgoId> {
 protected:
  std::string Hex(std::string_view input) const { return HexOf(GetParam(), input); }
  std::unique_ptr<Hasher> Make() const { return MakeHasher(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(HasherTest, EachAlgorithmTest,
                         ::testing::ValuesIn(IdsFromMask(AllAlgosMask)), [](const auto& param) {
                           std::string name(GetAlgo(param.param).tag);
                           std::erase(name, '-');
                           return name;
                         });

TEST_P(EachAlgorithmTest, AgreesWithOtherTools) {
  const DigestVectors& vectors = VectorsOf(GetParam());
  EXPECT_EQ(Hex(""), vectors.ofEmpty);
  EXPECT_EQ(Hex("abc"), vectors.ofAbc);
  EXPECT_EQ(Hex("123456789"), vectors.ofNineDigits);
  EXPECT_EQ(Hex(std::string(1000000, 'a')), vectors.ofMillionA);
}

TEST_P(EachAlgorithmTest, AgreesWithOtherToolsAtEveryLength) {
  const std::string input = CountingBytes(LongestVectorLength);
  const auto collected = MakeHasher(AlgoId::Sha256);
  for (size_t length = 0; length <= LongestVectorLength; ++length) {
    const Digest digest = HashBytes(GetParam(), AsBytes(input).first(length));
    collected->Update(digest.bytes.data(), digest.length);
  }
  EXPECT_EQ(DigestToHex(collected->Final(), false), VectorsOf(GetParam()).ofAllLengths);
}

TEST_P(EachAlgorithmTest, LeavesZerosAfterTheDigest) {
  const Digest digest = HashBytes(GetParam(), AsBytes("abc"));
  EXPECT_EQ(digest.length, GetAlgo(GetParam()).digestSize);
  for (size_t i = digest.length; i < digest.bytes.size(); ++i) {
    EXPECT_EQ(digest.bytes[i], 0) << "byte " << i;
  }
}

TEST_P(EachAlgorithmTest, WithoutInputGivesTheDigestOfAnEmptyText) {
  EXPECT_EQ(DigestToHex(Make()->Final(), false), VectorsOf(GetParam()).ofEmpty);
}

TEST_P(EachAlgorithmTest, IgnoresEmptyPieces) {
  const auto hasher = Make();
  hasher->Update(nullptr, 0);
  hasher->Update("a", 1);
  hasher->Update("", 0);
  hasher->Update("bc", 2);
  hasher->Update(nullptr, 0);
  EXPECT_EQ(DigestToHex(hasher->Final(), false), VectorsOf(GetParam()).ofAbc);
}

TEST_P(EachAlgorithmTest, StartsOverAfterAReset) {
  const std::string input = CountingBytes(LongestVectorLength);
  const auto hasher = Make();
  hasher->Reset();
  for (const bool isFinished : {true, false}) {
    for (const size_t length : {size_t{0}, size_t{1}, size_t{72}, size_t{200}, input.size()}) {
      SCOPED_TRACE(length);
      hasher->Update(input.data(), length);
      if (isFinished) {
        EXPECT_EQ(DigestToHex(hasher->Final(), false),
                  Hex(std::string_view(input).substr(0, length)));
      }
      hasher->Reset();
      hasher->Update("abc", 3);
      EXPECT_EQ(DigestToHex(hasher->Final(), false), VectorsOf(GetParam()).ofAbc);
      hasher->Reset();
    }
  }
}

TEST_P(EachAlgorithmTest, AcceptsSingleBytes) {
  const std::string input = CountingBytes(LongestVectorLength);
  const auto hasher = Make();
  for (const char& byte : input) hasher->Update(&byte, 1);
  EXPECT_EQ(DigestToHex(hasher->Final(), false), Hex(input));
}

// Lengths around the boundaries of every block and chunk inside the algorithms: 64 and 128
// (MD and SHA-2), 136, 104 and 72 (SHA-3), 1024 (BLAKE3's chunk, XXH3's stripes), 240 and 256
// (XXH3's ranges and buffer).
TEST_P(EachAlgorithmTest, AcceptsTwoPiecesCutAnywhere) {
  constexpr size_t blockLengths[] = {16, 64, 72, 104, 128, 136, 240, 256, 1024};
  const std::string input = CountingBytes(1024 + 1);
  for (const size_t block : blockLengths) {
    for (const size_t length : {block - 1, block, block + 1}) {
      const std::string whole = Hex(std::string_view(input).substr(0, length));
      for (size_t cut = 0; cut <= length; ++cut) {
        const auto hasher = Make();
        hasher->Update(input.data(), cut);
        hasher->Update(input.data() + cut, length - cut);
        ASSERT_EQ(DigestToHex(hasher->Final(), false), whole) << length << " cut at " << cut;
      }
    }
  }
}

TEST_P(EachAlgorithmTest, ReadsFromAnyAddress) {
  const std::string input = CountingBytes(2049);
  const std::string whole = Hex(input);
  std::vector<char> memory(input.size() + 64);
  for (size_t offset = 0; offset < 64; ++offset) {
    std::copy(input.begin(), input.end(), memory.begin() + static_cast<ptrdiff_t>(offset));
    EXPECT_EQ(Hex({memory.data() + offset, input.size()}), whole) << "offset " << offset;
  }
}

TEST_P(EachAlgorithmTest, AcceptsPiecesOfAnySize) {
  std::mt19937 random(20240229);
  for (int round = 0; round < 200; ++round) {
    const std::string input = CountingBytes(random() % 6000);
    const size_t longestPiece = 1 + random() % 700;
    const auto hasher = Make();
    std::string pieces;
    for (size_t position = 0; position < input.size();) {
      const size_t piece = std::min(random() % (longestPiece + 1), input.size() - position);
      hasher->Update(input.data() + position, piece);
      position += piece;
      pieces += ' ' + std::to_string(piece);
    }
    ASSERT_EQ(DigestToHex(hasher->Final(), false), Hex(input)) << "pieces" << pieces;
  }
}

TEST_P(EachAlgorithmTest, TwoHashersDoNotAffectEachOther) {
  const auto abc = Make();
  const auto digits = Make();
  abc->Update("a", 1);
  digits->Update("12345", 5);
  abc->Update("bc", 2);
  digits->Update("6789", 4);
  EXPECT_EQ(DigestToHex(abc->Final(), false), VectorsOf(GetParam()).ofAbc);
  EXPECT_EQ(DigestToHex(digits->Final(), false), VectorsOf(GetParam()).ofNineDigits);
}

TEST_P(EachAlgorithmTest, WorksOnManyThreadsAtOnce) {
  const std::string input = CountingBytes(20000);
  std::vector<std::string> digests(8);
  std::vector<std::thread> threads;
  for (std::string& digest : digests) {
    threads.emplace_back([this, &input, &digest] { digest = Hex(input); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& digest : digests) EXPECT_EQ(digest, Hex(input));
}

TEST_P(EachAlgorithmTest, MayBeFinishedOnAnotherThread) {
  const auto hasher = Make();
  std::string digest;
  std::thread([&] {
    hasher->Update("abc", 3);
    digest = DigestToHex(hasher->Final(), false);
  }).join();
  EXPECT_EQ(digest, VectorsOf(GetParam()).ofAbc);
}

// --- More than a provider accepts in one call ---------------------------------------------------

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};

// Not SHA-1: Wine's provider gives wrong digests for pieces of 512 MiB and more.
TEST(HasherTest, SplitsAnInputTooLongForOneCall) {
  constexpr size_t size = ProviderPieceLimit + LongestVectorLength;
  // Zeros directly from the system: only pages that are written to take memory.
  const std::unique_ptr<char, FreeMemory> memory(static_cast<char*>(std::calloc(size, 1)));
  ASSERT_NE(memory, nullptr);
  memory.get()[0] = 1;
  memory.get()[ProviderPieceLimit - 1] = 2;
  memory.get()[ProviderPieceLimit] = 3;
  memory.get()[size - 1] = 4;
  EXPECT_EQ(HexOf(AlgoId::Md5, {memory.get(), size}), md5OverPieceLimit);
  EXPECT_EQ(HexOf(AlgoId::Sha256, {memory.get(), size}), sha256OverPieceLimit);
}

// --- Failures -----------------------------------------------------------------------------------

std::string FailureOf(AlgoId id) {
  try {
    MakeHasher(id);
    return "none";
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
}

constexpr AlgoMask providerAlgos = MaskOf(AlgoId::Md2) | MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Md5) |
                                   MaskOf(AlgoId::Sha1) | MaskOf(AlgoId::Sha256) |
                                   MaskOf(AlgoId::Sha384) | MaskOf(AlgoId::Sha512);

TEST(HasherTest, FailsIfTheProviderFails) {
  {
    const InstalledFaults faults({{.call = SystemCall::CreateDigest, .nth = 0, .code = 8}});
    for (const AlgoInfo& info : AllAlgos()) {
      SCOPED_TRACE(info.tag);
      const bool usesProvider = (providerAlgos & MaskOf(info.id)) != 0;
      EXPECT_EQ(FailureOf(info.id), usesProvider ? "BCryptCreateHash failed" : "none");
    }
  }
  for (const AlgoInfo& info : AllAlgos()) EXPECT_EQ(FailureOf(info.id), "none") << info.tag;
}

TEST(HasherTest, HashBytesReportsAProviderFailure) {
  const InstalledFaults faults({{.call = SystemCall::CreateDigest, .nth = 0, .code = 8}});
  EXPECT_THROW(HashBytes(AlgoId::Sha256, AsBytes("abc")), std::runtime_error);
}

TEST(HasherTest, RejectsAlgorithmsOutsideTheCatalogue) {
  for (const int id : {15, 16, 31, 32, 255}) {
    EXPECT_EQ(FailureOf(static_cast<AlgoId>(id)), "unknown algorithm") << id;
  }
}

}  // namespace
}  // namespace swr::testing
