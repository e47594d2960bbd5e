// Sorts the list by a column when its heading is clicked. Later rows are appended unsorted.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "app/flows/list_cells.h"
#include "app/flows/list_columns.h"
#include "app/flows/refresh.h"
#include "app/rows/row_table.h"
#include "app/screen/column_view.h"
#include "app/screen/list_view.h"

namespace app {

class Sorting {
 public:
  // All must outlive the object.
  Sorting(RowTable& rows, const ListColumns& columns, const ListCells& cells, Refresh& refresh,
          ListView& list, ColumnView& view);

  // The first click on a column sorts ascending; each further one reverses the direction. Does
  // nothing for a column that does not exist.
  void SortBy(size_t column);
  // To be called when the columns are replaced: the next click on any sorts ascending.
  void Forget() { column_.reset(); }

 private:
  // The indexes of the rows, sorted.
  std::vector<size_t> OrderBySize() const;
  std::vector<size_t> OrderByText(size_t column) const;

  RowTable& rows_;
  const ListColumns& columns_;
  const ListCells& cells_;
  Refresh& refresh_;
  ListView& list_;
  ColumnView& view_;
  std::optional<size_t> column_;
  bool descending_ = false;
};

}  // namespace app
