#include "app/flows/sorting.h"

#include <algorithm>
#include <cstdint>

#include "app/rows/row_walk.h"
#include "swr/system/natural_order.h"

namespace app {

Sorting::Sorting(RowTable& rows, const ListColumns& columns, const ListCells& cells,
                 Refresh& refresh, ListView& list, ColumnView& view)
    : rows_(rows), columns_(columns), cells_(cells), refresh_(refresh), list_(list), view_(view) {}

void Sorting::SortBy(size_t column) {
  if (column >= columns_.Defs().size()) return;
  descending_ = column_ == column && !descending_;
  column_ = column;

  rows_.Reorder(columns_.Defs()[column].kind == ColumnKind::Size ? OrderBySize()
                                                                 : OrderByText(column));

  list_.ClearSelection();
  list_.RedrawRows();
  view_.ShowSortMark(column_, descending_);
  refresh_.AfterRowChange();
}

std::vector<size_t> Sorting::OrderBySize() const {
  struct Entry {
    uint64_t size;
    size_t index;
  };
  std::vector<Entry> entries;
  entries.reserve(rows_.Size());
  for (const Row& row : rows_) entries.push_back({row.size, entries.size()});
  // Rows of equal size keep their order, in either direction.
  std::ranges::sort(entries, [this](const Entry& a, const Entry& b) {
    return a.size != b.size ? (a.size < b.size) != descending_ : a.index < b.index;
  });
  std::vector<size_t> order;
  order.reserve(entries.size());
  for (const Entry& entry : entries) order.push_back(entry.index);
  return order;
}

std::vector<size_t> Sorting::OrderByText(size_t column) const {
  const auto textOf = [&](size_t row) {
    rows_.Prefetch(row + RowsAhead);
    rows_.PrefetchTexts(row + TextsAhead);
    return cells_.TextOf(row, column);
  };
  return swr::SortNaturally(rows_.Size(), textOf, descending_);
}

}  // namespace app
