#include "app/flows/sorting.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "swr/system/text_services.h"

namespace app {

Sorting::Sorting(RowTable& rows, const ListColumns& columns, const ListCells& cells,
                 Refresh& refresh, ListView& list, ColumnView& view)
    : rows_(rows), columns_(columns), cells_(cells), refresh_(refresh), list_(list), view_(view) {}

void Sorting::SortBy(size_t column) {
  if (column >= columns_.Defs().size()) return;
  descending_ = column_ == column && !descending_;
  column_ = column;

  // The texts are made once and not for each comparison.
  const bool bySize = columns_.Defs()[column].kind == ColumnKind::Size;
  std::vector<std::u16string> texts(bySize ? 0 : rows_.Size());
  for (size_t i = 0; i < texts.size(); ++i) {
    texts[i] = swr::SystemNaturalKey(cells_.TextOf(i, column));
  }
  const auto goesBefore = [&](size_t a, size_t b) {
    if (descending_) std::swap(a, b);
    return bySize ? rows_[a].size < rows_[b].size
                  : swr::SystemCompareNaturalKeys(texts[a], texts[b]) < 0;
  };
  std::vector<size_t> order(rows_.Size());
  std::iota(order.begin(), order.end(), size_t{0});
  // Rows that compare equal keep their order, in either direction.
  std::ranges::stable_sort(order, goesBefore);
  rows_.Reorder(order);

  list_.ClearSelection();
  list_.RedrawRows();
  view_.ShowSortMark(column_, descending_);
  refresh_.AfterRowChange();
}

}  // namespace app
