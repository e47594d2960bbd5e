// Iterates over many rows of a long list.
#pragma once

#include <cstddef>
#include <span>

#include "app/rows/row.h"

namespace app {

// Once a long list is sorted, its rows are scattered in memory, and reading them one by one means
// mostly waiting for memory. So a row is prefetched while those before it are read: this many rows
// ahead.
inline constexpr size_t RowsAhead = 16;
// Its texts and digests are prefetched once it has arrived.
inline constexpr size_t TextsAhead = RowsAhead / 2;

// Calls visit(const Row&) for each of these rows, in this order. The visit reads neither the name
// nor digests, but may check which digests there are.
template <typename Visit>
void ForEachRowState(std::span<const Row* const> rows, const Visit& visit) {
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i + RowsAhead < rows.size()) PrefetchRowState(*rows[i + RowsAhead]);
    visit(*rows[i]);
  }
}

// The same for a visit that reads everything.
template <typename Visit>
void ForEachRow(std::span<const Row* const> rows, const Visit& visit) {
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i + RowsAhead < rows.size()) PrefetchRow(*rows[i + RowsAhead]);
    if (i + TextsAhead < rows.size()) PrefetchRowTexts(*rows[i + TextsAhead]);
    visit(*rows[i]);
  }
}

}  // namespace app
