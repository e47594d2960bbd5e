#include "app/rows/row_id_set.h"

#include <gtest/gtest.h>

#include <vector>

namespace app {
namespace {

TEST(RowIdSetTest, ContainsExactlyTheGivenIds) {
  struct Case {
    const char* description;
    std::vector<uint64_t> ids;
  };
  const Case cases[] = {
      {"none", {}},
      {"one", {5}},
      {"the lowest possible", {0, 1}},
      {"one twice", {7, 3, 7}},
      {"in any order", {9, 2, 64, 65, 130}},
      {"the highest possible", {UINT64_MAX, UINT64_MAX - 2}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    const RowIdSet set(test.ids);
    for (const uint64_t start : {uint64_t{0}, UINT64_MAX - 200}) {
      for (uint64_t id = start; id <= start + 200 && id >= start; ++id) {
        const bool isIn = std::ranges::find(test.ids, id) != test.ids.end();
        ASSERT_EQ(set.Contains(id), isIn) << id;
        if (id == UINT64_MAX) break;
      }
    }
  }
}

}  // namespace
}  // namespace app
