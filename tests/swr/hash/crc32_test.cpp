#include "swr/hash/crc32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

const uint8_t* AsBytes(std::string_view text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}

uint32_t Crc32(std::string_view bytes) {
  return ~Crc32Update(Crc32Start, AsBytes(bytes), bytes.size());
}

// The definition, bit by bit.
uint32_t PlainUpdate(uint32_t state, std::string_view bytes) {
  for (const char byte : bytes) {
    state ^= static_cast<uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) state = (state >> 1) ^ (0xEDB88320 * (state & 1));
  }
  return state;
}

TEST(Crc32Test, GivesKnownValues) {
  EXPECT_EQ(Crc32(""), 0u);
  EXPECT_EQ(Crc32("a"), 0xE8B7BE43);
  EXPECT_EQ(Crc32("123456789"), 0xCBF43926);
  EXPECT_EQ(Crc32("The quick brown fox jumps over the lazy dog"), 0x414FA339u);
}

TEST(Crc32Test, KeepsTheStateForNoBytes) {
  EXPECT_EQ(Crc32Update(0x12345678, nullptr, 0), 0x12345678u);
}

// Each of the eight positions in a word has its own table, so each byte value is tried in each
// position.
TEST(Crc32Test, LooksUpEachByteInEachPosition) {
  for (size_t place = 0; place < 8; ++place) {
    for (int value = 0; value < 256; ++value) {
      std::string word(8, '\0');
      word[place] = static_cast<char>(value);
      ASSERT_EQ(Crc32ByTables(0, AsBytes(word), 8), PlainUpdate(0, word))
          << "byte " << value << " in position " << place;
    }
  }
}

TEST(Crc32Test, FollowsTheDefinitionAtEachLengthAndAddress) {
  const std::string bytes = CountingBytes(160 + 16);
  for (size_t offset = 0; offset < 16; ++offset) {
    for (size_t length = 0; length <= 160; ++length) {
      const std::string_view piece = std::string_view(bytes).substr(offset, length);
      ASSERT_EQ(Crc32Update(Crc32Start, AsBytes(piece), length), PlainUpdate(Crc32Start, piece))
          << length << " bytes at " << offset;
    }
  }
}

TEST(Crc32Test, CarriesTheStateFromPieceToPiece) {
  const std::string bytes = CountingBytes(1000);
  const uint32_t whole = PlainUpdate(Crc32Start, bytes);
  for (const size_t piece : {1u, 3u, 5u, 7u, 8u, 9u, 13u, 15u, 17u, 31u, 999u}) {
    uint32_t state = Crc32Start;
    for (size_t position = 0; position < bytes.size(); position += piece) {
      const std::string_view part = std::string_view(bytes).substr(position, piece);
      state = Crc32Update(state, AsBytes(part), part.size());
    }
    EXPECT_EQ(state, whole) << "pieces of " << piece;
  }
}

// Compares both implementations with each other and with the definition, for pieces of any length,
// alignment and state. The processor that runs the tests must support both.
TEST(Crc32Test, FoldingAndTablesAgree) {
  ASSERT_TRUE(CanFoldCrc32());
  std::mt19937 random(128);
  std::string bytes(5000, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  for (int round = 0; round < 3000; ++round) {
    const size_t offset = random() % 200;
    const size_t length = ShortestFoldedPiece + random() % (round % 10 == 0 ? 4000 : 300);
    const std::string_view piece = std::string_view(bytes).substr(offset, length);
    const auto state = static_cast<uint32_t>(random());
    const uint32_t folded = Crc32ByFolding(state, AsBytes(piece), length);
    ASSERT_EQ(folded, Crc32ByTables(state, AsBytes(piece), length)) << length << " at " << offset;
    ASSERT_EQ(folded, PlainUpdate(state, piece)) << length << " at " << offset;
  }
}

TEST(Crc32Test, FoldsLengthsAroundBlockBoundaries) {
  ASSERT_TRUE(CanFoldCrc32());
  const std::string bytes = CountingBytes(400);
  for (size_t length = ShortestFoldedPiece; length <= bytes.size(); ++length) {
    const std::string_view piece = std::string_view(bytes).substr(0, length);
    ASSERT_EQ(Crc32ByFolding(Crc32Start, AsBytes(piece), length), PlainUpdate(Crc32Start, piece))
        << length;
  }
}

TEST(Crc32Test, FollowsTheDefinitionFromAnyState) {
  std::mt19937 random(32);
  for (int round = 0; round < 1000; ++round) {
    const uint32_t state = static_cast<uint32_t>(random());
    std::string bytes(random() % 40, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    ASSERT_EQ(Crc32Update(state, AsBytes(bytes), bytes.size()), PlainUpdate(state, bytes))
        << "state " << state << ", " << bytes.size() << " bytes";
  }
}

}  // namespace
}  // namespace swr::testing
