// Keccak-f[1600] of FIPS 202, the permutation that SHA-3 is built on.
#pragma once

#include <array>
#include <cstdint>

namespace swr {

// Lane x + 5 y of the standard's state A[x, y]. In memory each lane is little-endian, so that the
// array's bytes are the standard's byte string.
using KeccakLanes = std::array<uint64_t, 25>;

void KeccakF1600(KeccakLanes& lanes);

// Absorbs `blocks` blocks of `rate` bytes each, which need not be aligned: every block is XORed
// into the first lanes, followed by one permutation. `rate` is a multiple of 8, from 8 to 192. Uses
// the processor's BMI instructions where it has them.
void KeccakAbsorb(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks, uint32_t rate);

// The same without them, for any processor. Public so that tests can run it on every machine.
void KeccakAbsorbPortable(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks, uint32_t rate);

}  // namespace swr
