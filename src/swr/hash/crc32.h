// CRC-32 of IEEE 802.3: reflected polynomial 0xEDB88320, start value 0xFFFFFFFF, complemented at
// the end.
#pragma once

#include <cstdint>

namespace swr {

inline constexpr uint32_t Crc32Start = 0xFFFFFFFF;

// The state after `size` further bytes. Start with Crc32Start; the checksum is the complement of
// the last state.
uint32_t Crc32Update(uint32_t state, const uint8_t* data, uint64_t size);

// The two ways in which Crc32Update works; both give the same. The tables work on any processor.
uint32_t Crc32ByTables(uint32_t state, const uint8_t* data, uint64_t size);
// Many times as fast, where the processor multiplies without carries; crc32_folding.cpp.
bool CanFoldCrc32();
inline constexpr uint64_t ShortestFoldedPiece = 64;  // bytes
uint32_t Crc32ByFolding(uint32_t state, const uint8_t* data, uint64_t size);

}  // namespace swr
