// The status line and the progress bar, and the rows that are shown as being hashed.
#pragma once

#include "app/flows/open_requests.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"
#include "app/screen/status_view.h"
#include "app/worker/hash_queue.h"

namespace app {

class ProgressDisplay {
 public:
  // All must outlive the object.
  ProgressDisplay(RowTable& rows, const HashQueue& queue, const OpenRequests& open, ListView& list,
                  StatusView& status);

  // Brings the status line and the bar up to date.
  void Update() { Show(queue_.GetSnapshot()); }
  void Show(const WorkerSnapshot& snapshot);
  // Shows the rows of the file that the worker is reading as being hashed.
  void MarkRunningRows(const WorkerSnapshot& snapshot);

 private:
  void MarkAsRunning(size_t index);

  RowTable& rows_;
  const HashQueue& queue_;
  const OpenRequests& open_;
  ListView& list_;
  StatusView& status_;
};

}  // namespace app
