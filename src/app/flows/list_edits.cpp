#include "app/flows/list_edits.h"

#include <algorithm>

namespace app {

void ListEdits::RemoveRows(const RowIds& ids) {
  if (uses_.arrivals.Open().Any()) uses_.arrivals.OnRemoval(FindRows(uses_.rows, ids));
  uses_.hashing.RemoveRows(ids);
  // In this order, because the list view then deselects rows beyond its end without reporting each.
  uses_.list.SetRowCount(uses_.rows.Size());
  uses_.list.ClearSelection();
  uses_.refresh.AfterRowChange();
}

void ListEdits::Clear() {
  uses_.arrivals.Forget();
  uses_.hashing.RemoveAllRows();
  uses_.comparison.Forget();
  uses_.lookUp.Forget();
  uses_.list.SetRowCount(0);
  uses_.banners.Hide();
  uses_.refresh.AfterRowChange();
}

void ListEdits::CancelAll() {
  uses_.arrivals.Cancel();
  uses_.hashing.CancelAll();
  uses_.list.RedrawRows();
  uses_.expected.Compare();
  uses_.progress.Update();
}

void ListEdits::RemovePlainRow(const std::u16string& path) {
  const std::vector<size_t> found = uses_.rows.IndexesOfPath(path);
  const auto plain =
      std::ranges::find_if(found, [&](size_t index) { return !uses_.rows[index].hasExpected; });
  RemoveRows(plain == found.end() ? RowIds{} : RowIds{uses_.rows[*plain].id});
}

}  // namespace app
