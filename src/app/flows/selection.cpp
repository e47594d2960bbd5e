#include "app/flows/selection.h"

namespace app {

RowIds Selection::Ids() const {
  RowIds ids;
  ids.reserve(list_.SelectedRowCount());
  for (const size_t index : list_.SelectedRows()) {
    if (index < rows_.Size()) ids.push_back(rows_.IdAt(index));
  }
  return ids;
}

std::vector<const Row*> Selection::Rows() const {
  std::vector<const Row*> selected;
  selected.reserve(list_.SelectedRowCount());
  for (const size_t index : list_.SelectedRows()) {
    if (index < rows_.Size()) selected.push_back(&rows_[index]);
  }
  return selected;
}

const Row* Selection::SingleRow() const {
  if (list_.SelectedRowCount() != 1) return nullptr;
  const std::vector<size_t> selected = list_.SelectedRows();
  return selected.empty() || selected.front() >= rows_.Size() ? nullptr : &rows_[selected.front()];
}

std::vector<const Row*> FindRows(const RowTable& rows, const RowIds& ids) {
  std::vector<const Row*> found;
  found.reserve(ids.size());
  for (const uint64_t id : ids) {
    if (const Row* row = rows.Find(id)) found.push_back(row);
  }
  return found;
}

std::vector<const Row*> AllRows(const RowTable& rows) {
  std::vector<const Row*> all;
  all.reserve(rows.Size());
  for (const Row& row : rows) all.push_back(&row);
  return all;
}

}  // namespace app
