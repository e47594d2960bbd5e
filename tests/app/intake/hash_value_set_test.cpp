#include "app/intake/hash_value_set.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <unordered_set>

namespace app {
namespace {

TEST(HashValueSetTest, AgreesWithTheStandardSet) {
  std::mt19937_64 random(20261122);
  HashValueSet set;
  std::unordered_set<uint64_t> expected;
  for (int i = 0; i < 50'000; ++i) {
    // Few different values, of which many share their low bits.
    const uint64_t value = 2 + (random() % 20'000 << (random() % 8 * 8));
    ASSERT_EQ(set.Insert(value), expected.insert(value).second) << value;
  }
}

TEST(HashValueSetTest, ZeroIsStoredAsOne) {
  HashValueSet set;
  EXPECT_TRUE(set.Insert(0));
  EXPECT_FALSE(set.Insert(0));
  EXPECT_FALSE(set.Insert(1));
  EXPECT_TRUE(set.Insert(2));
}

}  // namespace
}  // namespace app
