#include "app/flows/progress_display.h"

#include <optional>

#include "app/verdicts/status_line.h"

namespace app {

ProgressDisplay::ProgressDisplay(RowTable& rows, const HashQueue& queue, const OpenRequests& open,
                                 ListView& list, StatusView& status)
    : rows_(rows), queue_(queue), open_(open), list_(list), status_(status) {}

void ProgressDisplay::Show(const WorkerSnapshot& snapshot) {
  if (snapshot.active) {
    status_.SetStatusText(RunningLine(snapshot));
    status_.ShowProgress(FiguresOf(snapshot));
    return;
  }
  const uint64_t totalSize = rows_.Counters().TotalSize();
  if (open_.Any()) {
    status_.SetStatusText(LookingUpLine(rows_.Size(), totalSize));
    status_.ShowProgress(FiguresOf(snapshot));
    return;
  }
  status_.SetStatusText(IdleLine(rows_.Size(), totalSize));
  status_.ShowProgress(std::nullopt);
}

// The worker does not report that it starts a file. Rows are found by path: a list can hold the
// same file twice, and then both rows show that it is being read.
void ProgressDisplay::MarkRunningRows(const WorkerSnapshot& snapshot) {
  const bool isBetweenJobs = snapshot.currentPath.empty();
  if (!snapshot.active || isBetweenJobs) return;
  const std::optional<size_t> own = rows_.IndexOf(snapshot.currentRowId);
  if (own && rows_.PathsAreUnique()) {
    MarkAsRunning(*own);
  } else {
    for (const size_t index : rows_.IndexesOfPath(snapshot.currentPath)) MarkAsRunning(index);
  }
}

void ProgressDisplay::MarkAsRunning(size_t index) {
  const Row& row = rows_[index];
  if (row.pendingMask == 0 || row.status == RowStatus::Failed || row.status == RowStatus::Hashing) {
    return;
  }
  rows_.UpdateAt(index, [](RowState& state) { state.status = RowStatus::Hashing; });
  list_.RedrawRow(index);
}

}  // namespace app
