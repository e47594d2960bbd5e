// Rows that come into the list by the thousand, from a folder or from a checksum file.
#pragma once

#include <cstddef>
#include <utility>

#include "app/flows/hashing.h"
#include "app/rows/row_table.h"

namespace app {

// Appends rows, and lets the worker start with the first ones while the last are still being made.
class NewRows {
 public:
  NewRows(RowTable& rows, Hashing& hashing)
      : rows_(rows), hashing_(hashing), queued_(rows.Size()) {}

  const Row& Append(Row row) {
    const Row& added = rows_.Append(std::move(row));
    if (rows_.Size() - queued_ == QueuedAtOnce) Queue();
    return added;
  }
  // To be called after the last row.
  void Finish() { Queue(); }

 private:
  // Waking the worker costs more than hashing a small file.
  static constexpr size_t QueuedAtOnce = 512;

  void Queue() {
    hashing_.QueueFrom(queued_);
    queued_ = rows_.Size();
  }

  RowTable& rows_;
  Hashing& hashing_;
  size_t queued_;
};

}  // namespace app
