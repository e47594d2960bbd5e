// Sorting the list by a column: once, at the click on its heading.
#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "app/window/main_window.h"
#include "swr/system/text_services.h"

namespace app {

void MainWindow::SortByColumn(size_t column) {
  if (column >= columns.size()) return;
  sortDescending = sortColumn == column && !sortDescending;
  sortColumn = column;

  // The texts are made once and not for each comparison.
  const bool bySize = columns[column].kind == ColumnKind::Size;
  std::vector<std::u16string> texts(bySize ? 0 : rows.size());
  for (size_t i = 0; i < texts.size(); ++i) texts[i] = swr::SystemNaturalKey(CellText(i, column));
  const auto goesBefore = [&](size_t a, size_t b) {
    if (sortDescending) std::swap(a, b);
    return bySize ? rows[a]->size < rows[b]->size
                  : swr::SystemCompareNaturalKeys(texts[a], texts[b]) < 0;
  };
  std::vector<size_t> order(rows.size());
  std::iota(order.begin(), order.end(), size_t{0});
  // Rows that compare equal keep their order, in either direction.
  std::ranges::stable_sort(order, goesBefore);
  std::vector<std::unique_ptr<ListRow>> sorted;
  sorted.reserve(rows.size());
  for (const size_t index : order) sorted.push_back(std::move(rows[index]));
  rows = std::move(sorted);

  RebuildRowIndex();
  view_.ClearSelection();
  view_.RedrawRows();
  view_.ShowSortMark(sortColumn, sortDescending);
  RefreshVerdicts();
}

}  // namespace app
