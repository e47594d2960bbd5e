// Going over many rows of a long list.
#pragma once

#include <cstddef>
#include <vector>

#include "app/rows/row.h"

namespace app {

// Calls visit(const Row&) for each of these rows, in this order. Once a long list is sorted, its
// rows lie anywhere in memory, and reading them one by one is mostly waiting. So the processor is
// told of the rows to come: first of a row, and later, when it is there, of what it points to.
template <typename Visit>
void ForEachRow(const std::vector<const Row*>& rows, const Visit& visit) {
  constexpr size_t rowsAhead = 16;
  constexpr size_t textsAhead = 8;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i + rowsAhead < rows.size()) PrefetchRow(*rows[i + rowsAhead]);
    if (i + textsAhead < rows.size()) PrefetchRowTexts(*rows[i + textsAhead]);
    visit(*rows[i]);
  }
}

}  // namespace app
