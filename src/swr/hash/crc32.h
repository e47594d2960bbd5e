// CRC-32 of IEEE 802.3: reflected polynomial 0xEDB88320, start value 0xFFFFFFFF, complemented at
// the end.
#pragma once

#include <cstdint>

namespace swr {

inline constexpr uint32_t Crc32Start = 0xFFFFFFFF;

// The state after `size` further bytes. The first state is Crc32Start; the checksum is the
// complement of the last. `data` may be null if `size` is 0.
uint32_t Crc32Update(uint32_t state, const uint8_t* data, uint64_t size);

// The two implementations that Crc32Update chooses from; both give the same result.

// Table lookups, for any processor and any size.
uint32_t Crc32ByTables(uint32_t state, const uint8_t* data, uint64_t size);

// Carry-less multiplication, many times as fast (crc32_folding.cpp). To be called only if
// CanFoldCrc32() and if `size` is at least ShortestFoldedPiece: it reads that many bytes at once.
uint32_t Crc32ByFolding(uint32_t state, const uint8_t* data, uint64_t size);
inline constexpr uint64_t ShortestFoldedPiece = 64;  // bytes
bool CanFoldCrc32();                                 // whether the processor supports it

}  // namespace swr
