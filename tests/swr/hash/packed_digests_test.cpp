#include "swr/hash/packed_digests.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

#include "swr/hash/algorithms.h"

namespace swr {
namespace {

DigestSlot SlotOf(size_t length, uint8_t fill) {
  DigestSlot slot;
  slot.present = true;
  slot.length = static_cast<uint8_t>(length);
  std::fill_n(slot.bytes.begin(), length, fill);
  return slot;
}

void ExpectSame(const PackedDigests& packed, const DigestSlots& slots) {
  EXPECT_EQ(packed.PresentMask(), slots.PresentMask());
  EXPECT_EQ(packed.IsEmpty(), slots.PresentMask() == 0);
  for (size_t i = 0; i < AlgoCount; ++i) {
    const DigestSlot& slot = slots[i];
    EXPECT_EQ(packed.Has(i), slot.present);
    const std::span<const uint8_t> expected = slot.present ? slot.View() : std::span<uint8_t>();
    EXPECT_TRUE(std::ranges::equal(packed.View(i), expected)) << i;
    const DigestSlot copy = packed[i];
    EXPECT_EQ(copy.present, slot.present);
    EXPECT_TRUE(std::ranges::equal(copy.View(), expected)) << i;
  }
}

TEST(PackedDigestsTest, HoldsTheLatestValues) {
  for (uint32_t seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    PackedDigests packed;
    DigestSlots slots;
    for (int step = 0; step < 40; ++step) {
      const size_t index = random() % AlgoCount;
      // A digest of any length; in one case of five, no digest, which removes the old one.
      DigestSlot slot;
      if (random() % 5 > 0) slot = SlotOf(random() % 65, static_cast<uint8_t>(random()));
      packed.Set(index, slot);
      slots.Make(index) = slot;
      ExpectSame(packed, slots);
      const PackedDigests copy = packed;
      ExpectSame(copy, slots);
      if (random() % 4 == 0) packed = PackedDigests(copy);
      ExpectSame(packed, slots);
    }
  }
}

TEST(PackedDigestsTest, HoldsTheDigestsOfAllAlgorithms) {
  PackedDigests packed;
  DigestSlots slots;
  for (const AlgoId id : IdsFromMask(AllAlgosMask)) {
    const DigestSlot slot = SlotOf(GetAlgo(id).digestSize, static_cast<uint8_t>(1 + IndexOf(id)));
    packed.Set(IndexOf(id), slot);
    slots.Make(IndexOf(id)) = slot;
  }
  ExpectSame(packed, slots);
  PackedDigests moved = std::move(packed);
  ExpectSame(moved, slots);
}

}  // namespace
}  // namespace swr
