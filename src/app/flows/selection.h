// The rows that the user has selected, by id. A flow that opens a menu or a dialog gets them
// beforehand, because the list may change while it is open.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

using RowIds = std::vector<uint64_t>;

class Selection {
 public:
  // Both must outlive the object.
  Selection(const RowTable& rows, const ListView& list) : rows_(rows), list_(list) {}

  size_t Count() const { return list_.SelectedRowCount(); }
  // Both in display order. The pointers are valid until the rows change.
  RowIds Ids() const;
  std::vector<const Row*> Rows() const;
  // Null unless exactly one row is selected.
  const Row* SingleRow() const;

 private:
  const RowTable& rows_;
  const ListView& list_;
};

// The rows of these ids that are still in the table, in the order of the ids.
std::vector<const Row*> FindRows(const RowTable& rows, const RowIds& ids);
// All rows, in display order.
std::vector<const Row*> AllRows(const RowTable& rows);

}  // namespace app
