#include "swr/hash/keccak.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

// Keccak team, "Keccak-f[1600] intermediate values": the zero state after one permutation and after
// two, first and last lanes.
TEST(KeccakTest, PermutesTheZeroState) {
  KeccakLanes lanes = {};
  KeccakF1600(lanes);
  EXPECT_EQ(lanes[0], 0xF1258F7940E1DDE7u);
  EXPECT_EQ(lanes[1], 0x84D5CCF933C0478Au);
  EXPECT_EQ(lanes[2], 0xD598261EA65AA9EEu);
  EXPECT_EQ(lanes[3], 0xBD1547306F80494Du);
  EXPECT_EQ(lanes[24], 0xEAF1FF7B5CECA249u);
  KeccakF1600(lanes);
  EXPECT_EQ(lanes[0], 0x2D5C954DF96ECB3Cu);
  EXPECT_EQ(lanes[1], 0x6A332CD07057B56Du);
  EXPECT_EQ(lanes[24], 0x20D06CD26A8FBF5Cu);
}

struct AbsorbCase {
  const char* description;
  decltype(&KeccakAbsorb) absorb;
};

// On a processor without BMI both are the same function.
constexpr AbsorbCase absorbCases[] = {
    {"for this processor", KeccakAbsorb},
    {"portable", KeccakAbsorbPortable},
};

TEST(KeccakTest, AbsorbsBlocksInOrder) {
  for (const AbsorbCase& row : absorbCases) {
    for (const uint32_t rate : {72u, 104u, 136u}) {
      SCOPED_TRACE(std::string(row.description) + ", rate " + std::to_string(rate));
      const std::string bytes = CountingBytes(size_t{rate} * 3 + 1);
      // From an odd address.
      const auto* data = reinterpret_cast<const uint8_t*>(bytes.data()) + 1;
      KeccakLanes absorbed = {};
      row.absorb(absorbed, data, 3, rate);

      KeccakLanes expected = {};
      for (size_t block = 0; block < 3; ++block) {
        auto* state = reinterpret_cast<uint8_t*>(expected.data());
        for (size_t i = 0; i < rate; ++i) state[i] ^= data[block * rate + i];
        KeccakF1600(expected);
      }
      EXPECT_EQ(absorbed, expected);
    }
  }
}

TEST(KeccakTest, AbsorbsNothing) {
  for (const AbsorbCase& row : absorbCases) {
    KeccakLanes lanes = {};
    row.absorb(lanes, nullptr, 0, 136);
    EXPECT_EQ(lanes, KeccakLanes{}) << row.description;
  }
}

}  // namespace
}  // namespace swr::testing
