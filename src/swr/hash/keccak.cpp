#include "swr/hash/keccak.h"

#include <bit>
#include <cstring>

namespace swr {
namespace {

static_assert(std::endian::native == std::endian::little, "lanes are stored in memory order");

// FIPS 202, section 3.2.5.
constexpr uint64_t roundConstants[24] = {
    0x0000000000000001, 0x0000000000008082, 0x800000000000808A, 0x8000000080008000,
    0x000000000000808B, 0x0000000080000001, 0x8000000080008081, 0x8000000000008009,
    0x000000000000008A, 0x0000000000000088, 0x0000000080008009, 0x000000008000000A,
    0x000000008000808B, 0x800000000000008B, 0x8000000000008089, 0x8000000000008003,
    0x8000000000008002, 0x8000000000000080, 0x000000000000800A, 0x800000008000000A,
    0x8000000080008081, 0x8000000000008080, 0x0000000080000001, 0x8000000080008008,
};

}  // namespace

// Theta, rho, pi, chi and iota in one pass, with the lanes in local variables named by row (b, g,
// k, m, s) and column (a, e, i, o, u). A round reads one set of variables and writes the other, so
// that nothing is copied.
#define KECCAK_ROUND(A, E, constant)                                                            \
  {                                                                                             \
    const uint64_t ca = A##ba ^ A##ga ^ A##ka ^ A##ma ^ A##sa;                                  \
    const uint64_t ce = A##be ^ A##ge ^ A##ke ^ A##me ^ A##se;                                  \
    const uint64_t ci = A##bi ^ A##gi ^ A##ki ^ A##mi ^ A##si;                                  \
    const uint64_t co = A##bo ^ A##go ^ A##ko ^ A##mo ^ A##so;                                  \
    const uint64_t cu = A##bu ^ A##gu ^ A##ku ^ A##mu ^ A##su;                                  \
    const uint64_t da = cu ^ std::rotl(ce, 1), de = ca ^ std::rotl(ci, 1);                      \
    const uint64_t di = ce ^ std::rotl(co, 1), dO = ci ^ std::rotl(cu, 1);                      \
    const uint64_t du = co ^ std::rotl(ca, 1);                                                  \
    KECCAK_ROW(E, b, A##ba ^ da, std::rotl(A##ge ^ de, 44), std::rotl(A##ki ^ di, 43),          \
               std::rotl(A##mo ^ dO, 21), std::rotl(A##su ^ du, 14))                            \
    E##ba ^= constant;                                                                          \
    KECCAK_ROW(E, g, std::rotl(A##bo ^ dO, 28), std::rotl(A##gu ^ du, 20),                      \
               std::rotl(A##ka ^ da, 3), std::rotl(A##me ^ de, 45), std::rotl(A##si ^ di, 61))  \
    KECCAK_ROW(E, k, std::rotl(A##be ^ de, 1), std::rotl(A##gi ^ di, 6),                        \
               std::rotl(A##ko ^ dO, 25), std::rotl(A##mu ^ du, 8), std::rotl(A##sa ^ da, 18))  \
    KECCAK_ROW(E, m, std::rotl(A##bu ^ du, 27), std::rotl(A##ga ^ da, 36),                      \
               std::rotl(A##ke ^ de, 10), std::rotl(A##mi ^ di, 15), std::rotl(A##so ^ dO, 56)) \
    KECCAK_ROW(E, s, std::rotl(A##bi ^ di, 62), std::rotl(A##go ^ dO, 55),                      \
               std::rotl(A##ku ^ du, 39), std::rotl(A##ma ^ da, 41), std::rotl(A##se ^ de, 2))  \
  }

#define KECCAK_ROW(E, row, v0, v1, v2, v3, v4)                            \
  {                                                                       \
    const uint64_t b0 = (v0), b1 = (v1), b2 = (v2), b3 = (v3), b4 = (v4); \
    E##row##a = b0 ^ (~b1 & b2), E##row##e = b1 ^ (~b2 & b3);             \
    E##row##i = b2 ^ (~b3 & b4), E##row##o = b3 ^ (~b4 & b0);             \
    E##row##u = b4 ^ (~b0 & b1);                                          \
  }

namespace {

[[gnu::always_inline]] inline void Permute(KeccakLanes& lanes) {
  uint64_t Aba = lanes[0], Abe = lanes[1], Abi = lanes[2], Abo = lanes[3], Abu = lanes[4];
  uint64_t Aga = lanes[5], Age = lanes[6], Agi = lanes[7], Ago = lanes[8], Agu = lanes[9];
  uint64_t Aka = lanes[10], Ake = lanes[11], Aki = lanes[12], Ako = lanes[13], Aku = lanes[14];
  uint64_t Ama = lanes[15], Ame = lanes[16], Ami = lanes[17], Amo = lanes[18], Amu = lanes[19];
  uint64_t Asa = lanes[20], Ase = lanes[21], Asi = lanes[22], Aso = lanes[23], Asu = lanes[24];
  uint64_t Eba, Ebe, Ebi, Ebo, Ebu, Ega, Ege, Egi, Ego, Egu, Eka, Eke, Eki, Eko, Eku;
  uint64_t Ema, Eme, Emi, Emo, Emu, Esa, Ese, Esi, Eso, Esu;

  for (size_t round = 0; round < 24; round += 2) {
    KECCAK_ROUND(A, E, roundConstants[round])
    KECCAK_ROUND(E, A, roundConstants[round + 1])
  }

  lanes = {Aba, Abe, Abi, Abo, Abu, Aga, Age, Agi, Ago, Agu, Aka, Ake, Aki,
           Ako, Aku, Ama, Ame, Ami, Amo, Amu, Asa, Ase, Asi, Aso, Asu};
}

#undef KECCAK_ROUND
#undef KECCAK_ROW

[[gnu::always_inline]] inline void Absorb(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks,
                                          uint32_t rate) {
  for (; blocks > 0; --blocks, data += rate) {
    for (uint32_t i = 0; i < rate / 8; ++i) {
      uint64_t word;
      std::memcpy(&word, data + size_t{i} * 8, sizeof word);
      lanes[i] ^= word;
    }
    Permute(lanes);
  }
}

#if defined(__x86_64__) || defined(__i386__)
// Chi computes "not a, and b" once per lane, which is one instruction on these processors.
[[gnu::target("bmi,bmi2")]] void AbsorbWithBmi(KeccakLanes& lanes, const uint8_t* data,
                                               uint64_t blocks, uint32_t rate) {
  Absorb(lanes, data, blocks, rate);
}
const auto absorb = __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2")
                        ? AbsorbWithBmi
                        : KeccakAbsorbPortable;
#else
constexpr auto absorb = KeccakAbsorbPortable;
#endif

}  // namespace

void KeccakF1600(KeccakLanes& lanes) { Permute(lanes); }

void KeccakAbsorb(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks, uint32_t rate) {
  absorb(lanes, data, blocks, rate);
}

void KeccakAbsorbPortable(KeccakLanes& lanes, const uint8_t* data, uint64_t blocks, uint32_t rate) {
  Absorb(lanes, data, blocks, rate);
}

}  // namespace swr
