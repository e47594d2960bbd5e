#include "swr/hash/crc32.h"

#include <array>
#include <bit>
#include <cstring>

namespace swr {
namespace {

using Tables = std::array<std::array<uint32_t, 256>, 8>;

// Slicing by eight: table 0 advances the state over one byte, table k over a byte that is followed
// by k others. Eight bytes then take eight independent lookups.
constexpr Tables MakeTables() {
  Tables tables = {};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320 : 0);
    tables[0][i] = value;
  }
  for (size_t k = 1; k < 8; ++k) {
    for (size_t i = 0; i < 256; ++i) {
      const uint32_t previous = tables[k - 1][i];
      tables[k][i] = (previous >> 8) ^ tables[0][previous & 255];
    }
  }
  return tables;
}

constexpr Tables tables = MakeTables();

static_assert(std::endian::native == std::endian::little, "words are read in memory order");

uint32_t LoadWord(const uint8_t* data) {
  uint32_t word;
  std::memcpy(&word, data, sizeof word);
  return word;
}

}  // namespace

uint32_t Crc32Update(uint32_t state, const uint8_t* data, uint64_t size) {
  static const bool canFold = CanFoldCrc32();
  return canFold && size >= ShortestFoldedPiece ? Crc32ByFolding(state, data, size)
                                                : Crc32ByTables(state, data, size);
}

uint32_t Crc32ByTables(uint32_t state, const uint8_t* data, uint64_t size) {
  for (; size >= 8; data += 8, size -= 8) {
    const uint32_t a = LoadWord(data) ^ state;
    const uint32_t b = LoadWord(data + 4);
    state = tables[7][a & 255] ^ tables[6][(a >> 8) & 255] ^ tables[5][(a >> 16) & 255] ^
            tables[4][a >> 24] ^ tables[3][b & 255] ^ tables[2][(b >> 8) & 255] ^
            tables[1][(b >> 16) & 255] ^ tables[0][b >> 24];
  }
  for (; size > 0; ++data, --size) state = (state >> 8) ^ tables[0][(state ^ *data) & 255];
  return state;
}

}  // namespace swr
