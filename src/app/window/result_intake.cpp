// Where the worker's reports enter the window, and what the status line says of its progress.
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "app/window/main_window.h"
#include "app/window/status_line.h"

namespace app {

void MainWindow::OnHashResults(std::vector<std::unique_ptr<ResultMessage>> results) {
  const ListRow* shown = SingleSelectedRow();
  const uint64_t shownId = shown == nullptr ? 0 : shown->id;
  bool changesDetails = false;
  std::optional<std::u16string> pageToOpen;
  for (const auto& result : results) {
    OnHashResult(*result);
    changesDetails = changesDetails || result->rowId == shownId;
    if (lookupPending && result->rowId == lookupRowId) pageToOpen = FinishLookUp();
  }
  MarkHashingRow(queue_.GetSnapshot());
  CompareExpected();
  if (changesDetails) RefreshDetails();
  UpdateStatusLine();
  if (pageToOpen) desktop_.OpenAddress(*pageToOpen);
  // Last, for its message stands until the user closes it.
  FinishFileCompare();
}

void MainWindow::OnHashResult(ResultMessage& result) {
  const auto index = IndexOfRow(result.rowId);
  if (!index) return;  // removed meanwhile
  ListRow* row = rows[*index].get();
  swr::HashOutcome& outcome = result.outcome;
  row->pendingMask &= ~result.mask & swr::AllAlgosMask;
  if (outcome.cancelled) {
    if (row->pendingMask == 0) row->status = RowStatus::Cancelled;
  } else if (outcome.error != 0) {
    row->status = RowStatus::Failed;
    row->error = outcome.error;
    row->pendingMask = 0;
  } else {
    if (row->digests.IsEmpty()) {
      row->digests = std::move(outcome.digests);
    } else {
      for (const swr::AlgoId id : swr::IdsFromMask(result.mask)) {
        row->digests.Make(swr::IndexOf(id)) = outcome.digests[swr::IndexOf(id)];
      }
    }
    row->changed = row->changed || outcome.changed;
    row->size = outcome.bytesRead;
    row->status = row->pendingMask == 0 ? RowStatus::Done : RowStatus::Waiting;
  }
  tally_.CountAgain(*index);
  view_.RedrawRow(*index);
}

// The worker sends nothing when it starts a file. The match is by path: a list can hold the same
// file twice, and both rows then show that it is being read.
void MainWindow::MarkHashingRow(const WorkerSnapshot& snapshot) {
  if (!snapshot.active) return;
  paths_.Find(snapshot.currentPath, [&](size_t i) {
    ListRow& row = *rows[i];
    if (row.pendingMask == 0 || row.status == RowStatus::Failed ||
        row.status == RowStatus::Hashing) {
      return;
    }
    row.status = RowStatus::Hashing;
    view_.RedrawRow(i);
  });
}

void MainWindow::OnSignatureResult(uint64_t rowId, const swr::SignatureResult& result) {
  ListRow* row = FindRow(rowId);
  if (row == nullptr) return;  // removed meanwhile
  row->signature = result;
  row->signatureRequested = false;
  if (row == SingleSelectedRow()) RefreshDetails();
}

void MainWindow::UpdateStatusLine() { ShowFigures(queue_.GetSnapshot()); }

void MainWindow::ShowFigures(const WorkerSnapshot& snapshot) {
  if (snapshot.active) {
    view_.SetStatusText(RunningLine(snapshot));
    view_.ShowProgress(FiguresOf(snapshot));
    return;
  }
  view_.SetStatusText(IdleLine(rows.size(), tally_.TotalSize()));
  view_.ShowProgress(std::nullopt);
}

void MainWindow::OnProgressTimer() {
  const WorkerSnapshot snapshot = queue_.GetSnapshot();
  MarkHashingRow(snapshot);
  ShowFigures(snapshot);
  if (snapshot.active) return;
  // Results that wait come in with one of the next ticks, even if their announcement failed.
  if (!snapshot.resultsWait) StopProgressTimer();
  CompareExpected();
}

void MainWindow::StartProgressTimer() {
  if (!std::exchange(timerRuns_, true)) desktop_.StartProgressTimer();
}

void MainWindow::StopProgressTimer() {
  if (std::exchange(timerRuns_, false)) desktop_.StopProgressTimer();
}

}  // namespace app
