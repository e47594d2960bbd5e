// Rows that come into the list by the thousand, from a folder or from a checksum file.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "app/window/main_window.h"

namespace app {

// Puts new rows behind the others, and has the worker begin with the first ones while the last are
// still made. The rows are indexed and counted when all are there.
class NewRows {
 public:
  explicit NewRows(MainWindow& main) : main_(main), queued_(main.rows.size()) {}

  ListRow& Add(std::unique_ptr<ListRow> row) {
    main_.rows.push_back(std::move(row));
    if (main_.rows.size() - queued_ == QueuedAtOnce) Queue();
    return *main_.rows.back();
  }
  void Finish() {
    Queue();
    main_.IndexAddedRows();
  }

 private:
  // Waking the worker costs more than a small file does.
  static constexpr size_t QueuedAtOnce = 512;

  void Queue() {
    main_.QueueRowsFrom(queued_);
    queued_ = main_.rows.size();
  }

  MainWindow& main_;
  size_t queued_;
};

}  // namespace app
