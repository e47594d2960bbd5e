// Iterates over many rows of a long list.
#pragma once

#include <cstddef>
#include <vector>

#include "app/rows/row.h"

namespace app {

// Once a long list is sorted, its rows are scattered in memory, and reading them one by one means
// mostly waiting for memory. So a row is prefetched while those before it are read: this many rows
// ahead.
inline constexpr size_t RowsAhead = 16;

// Calls visit(const Row&) for each of these rows, in this order. The visit reads neither the name
// nor digests, but may check which digests there are.
template <typename Visit>
void ForEachRowState(const std::vector<const Row*>& rows, const Visit& visit) {
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i + RowsAhead < rows.size()) PrefetchRowState(*rows[i + RowsAhead]);
    visit(*rows[i]);
  }
}

// The same for a visit that reads everything. Prefetches each row first and, once it has
// arrived, what it points to.
template <typename Visit>
void ForEachRow(const std::vector<const Row*>& rows, const Visit& visit) {
  constexpr size_t textsAhead = RowsAhead / 2;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i + RowsAhead < rows.size()) PrefetchRow(*rows[i + RowsAhead]);
    if (i + textsAhead < rows.size()) PrefetchRowTexts(*rows[i + textsAhead]);
    visit(*rows[i]);
  }
}

}  // namespace app
