// CRC-32 by folding (V. Gopal and others, "Fast CRC Computation for Generic Polynomials Using
// PCLMULQDQ Instruction", Intel, 2009). The bytes are the coefficients of a polynomial, and the
// checksum is its remainder modulo P. A block of 128 bits that is followed by D bits may be
// replaced by any polynomial with the same remainder: here by the sum of the products of its halves
// with x^D mod P and x^(D+64) mod P, which is added to the block D bits later. One carry-less
// multiplication does that for a half. The single block that remains goes through the tables.
#include "swr/hash/crc32.h"

#if defined(__x86_64__) || defined(__i386__)

#include <immintrin.h>

#include <array>

#define SWR_FOLDING __attribute__((target("pclmul,sse2")))

namespace swr {
namespace {

// x^exponent mod P in reflected bit order, shifted left by one because the product of two reflected
// factors is one bit shorter.
constexpr int64_t Factor(int exponent) {
  uint32_t power = 0x80000000;  // 1
  for (int i = 0; i < exponent; ++i) power = (power >> 1) ^ ((power & 1) != 0 ? 0xEDB88320 : 0);
  return int64_t{power} << 1;
}

// The factors for a block that is followed by `distance` bits. In reflected order the low half has
// the higher powers. Both exponents are lower by 32, the width of the remainder.
template <int distance>
SWR_FOLDING __m128i Factors() {
  constexpr int64_t forLow = Factor(distance + 32);
  constexpr int64_t forHigh = Factor(distance - 32);
  return _mm_set_epi64x(forHigh, forLow);
}

SWR_FOLDING __m128i Load(const uint8_t* data) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

// Folds `block` and adds it to `onto`.
SWR_FOLDING __m128i Fold(__m128i block, __m128i factors, __m128i onto) {
  const __m128i low = _mm_clmulepi64_si128(block, factors, 0x00);
  const __m128i high = _mm_clmulepi64_si128(block, factors, 0x11);
  return _mm_xor_si128(_mm_xor_si128(low, high), onto);
}

}  // namespace

bool CanFoldCrc32() { return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse2"); }

// Four blocks at a time, so that the multiplications overlap.
SWR_FOLDING uint32_t Crc32ByFolding(uint32_t state, const uint8_t* data, uint64_t size) {
  constexpr uint64_t blockSize = 16;
  __m128i a = _mm_xor_si128(Load(data), _mm_cvtsi32_si128(static_cast<int>(state)));
  __m128i b = Load(data + blockSize);
  __m128i c = Load(data + 2 * blockSize);
  __m128i d = Load(data + 3 * blockSize);
  data += 4 * blockSize;
  size -= 4 * blockSize;
  const __m128i byFour = Factors<4 * 128>();
  for (; size >= 4 * blockSize; data += 4 * blockSize, size -= 4 * blockSize) {
    a = Fold(a, byFour, Load(data));
    b = Fold(b, byFour, Load(data + blockSize));
    c = Fold(c, byFour, Load(data + 2 * blockSize));
    d = Fold(d, byFour, Load(data + 3 * blockSize));
  }
  const __m128i byOne = Factors<128>();
  a = Fold(Fold(Fold(a, byOne, b), byOne, c), byOne, d);
  for (; size >= blockSize; data += blockSize, size -= blockSize) a = Fold(a, byOne, Load(data));
  std::array<uint8_t, blockSize> rest;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(rest.data()), a);
  return Crc32ByTables(Crc32ByTables(0, rest.data(), rest.size()), data, size);
}

}  // namespace swr

#else

namespace swr {

bool CanFoldCrc32() { return false; }

uint32_t Crc32ByFolding(uint32_t state, const uint8_t* data, uint64_t size) {
  return Crc32ByTables(state, data, size);
}

}  // namespace swr

#endif
