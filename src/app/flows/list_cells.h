// The texts and colours of the list's cells.
#pragma once

#include <cstddef>
#include <string>

#include "app/flows/list_columns.h"
#include "app/flows/options.h"
#include "app/rows/row_table.h"
#include "app/verdicts/row_verdict.h"

namespace app {

class ListCells {
 public:
  // All must outlive the object.
  ListCells(const RowTable& rows, const ListColumns& columns, const Options& options)
      : rows_(rows), columns_(columns), options_(options) {}

  // Empty for an index outside the list, because the list view can ask for rows that were just
  // removed.
  std::u16string TextOf(size_t row, size_t column) const;
  // None for an index outside the list.
  RowTint TintOf(size_t row) const;

 private:
  const swr::ParsedHash* Expected() const {
    return rows_.Expected() ? &*rows_.Expected() : nullptr;
  }

  const RowTable& rows_;
  const ListColumns& columns_;
  const Options& options_;
};

}  // namespace app
