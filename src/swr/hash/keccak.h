// The permutation Keccak-f[1600] of FIPS 202, on which SHA-3 is built.
#pragma once

#include <array>
#include <cstdint>

namespace swr {

// Lane x + 5 y of the standard's state A[x, y]. In memory each lane is little-endian, so that the
// array's bytes are the standard's byte string.
using KeccakLanes = std::array<uint64_t, 25>;

void KeccakF1600(KeccakLanes& lanes);

// Absorbs `blocks` blocks of `rate` bytes each: every block is XORed into the first lanes and
// followed by the permutation. `rate` is a multiple of 8, at most 192.
void KeccakAbsorb(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks, uint32_t rate);

}  // namespace swr
