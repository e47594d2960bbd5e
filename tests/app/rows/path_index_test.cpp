#include "app/rows/path_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <vector>

namespace app::testing {
namespace {

using Ids = std::vector<uint64_t>;

Ids Find(const PathIndex& index, uint64_t hash) {
  Ids ids;
  index.ForEach(hash, [&](uint64_t id) { ids.push_back(id); });
  std::ranges::sort(ids);
  return ids;
}

// Entries are added one by one, by the thousand, and more of them than the index has.
TEST(PathIndexTest, AgreesWithAMapWhateverTheSizesOfTheAdditions) {
  std::mt19937 random(1);
  PathIndex index;
  std::map<uint64_t, Ids> expected;
  uint64_t lastId = 0;
  constexpr size_t sizes[] = {0, 1, 1, 1023, 1, 5000, 1, 600, 600, 20'000, 1, 3000};
  for (const size_t added : sizes) {
    std::vector<PathIndex::Entry> entries(added);
    for (PathIndex::Entry& entry : entries) {
      entry = {.hash = random() % 5000, .id = ++lastId};
      expected[entry.hash].push_back(entry.id);
    }
    index.Add(entries);
    ASSERT_EQ(index.Size(), lastId);
    for (uint64_t hash = 0; hash < 5000; ++hash) ASSERT_EQ(Find(index, hash), expected[hash]);
  }
  index.Clear();
  EXPECT_EQ(index.Size(), 0u);
  EXPECT_EQ(Find(index, 1), Ids());
}

}  // namespace
}  // namespace app::testing
