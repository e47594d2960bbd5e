// The memory of a row table whose rows are added and removed again and again. Counted by
// replacement allocation functions, which sanitizer builds leave out.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/rows/row_table.h"
#include "swr/text/decimal_text.h"
#include "tests/support/allocation_peak.h"

namespace app {
namespace {

using Ids = std::vector<uint64_t>;
using RemoveRows = std::function<void(RowTable& rows, const Ids& previous, const Ids& added)>;

constexpr size_t RowsPerRound = 100;

// The peak of memory over some rounds, each of which adds rows and then removes some.
size_t PeakOver(size_t rounds, const RemoveRows& remove) {
  const swr::testing::AllocationPeak peak;
  RowTable rows;
  Ids previous;
  for (size_t round = 0; round < rounds; ++round) {
    Ids added;
    for (size_t i = 0; i < RowsPerRound; ++i) {
      Row row;
      row.path = u"folder/" + swr::DecimalText(i);
      added.push_back(rows.Append(std::move(row)).id);
    }
    rows.IndexesOfPath(u"folder/1");
    remove(rows, previous, added);
    previous = std::move(added);
  }
  return peak.Bytes();
}

// A removed row must leave nothing behind, not even its entry in the table of ids (8 bytes).
TEST(RowTableMemoryTest, DoesNotGrowWithTheRowsThatWereRemoved) {
  struct Case {
    const char* description;
    RemoveRows remove;
  };
  const Case cases[] = {
      {"the older rows are removed",
       [](RowTable& rows, const Ids& previous, const Ids&) { rows.Remove(previous); }},
      {"all rows are removed",
       [](RowTable& rows, const Ids&, const Ids& added) { rows.Remove(added); }},
      {"the list is cleared", [](RowTable& rows, const Ids&, const Ids&) { rows.Clear(); }},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    const size_t early = PeakOver(20, test.remove);
    EXPECT_GT(early, RowsPerRound * sizeof(Row));
    EXPECT_LT(PeakOver(1000, test.remove), early + early / 10);
  }
}

// A list can have a million rows. Its flags fit into what would be unused otherwise.
TEST(RowTableMemoryTest, ARowTakesNoMoreThan184Bytes) {
  EXPECT_LE(sizeof(Row), sizeof(void*) == 8 ? 184u : 160u);
}

}  // namespace
}  // namespace app
