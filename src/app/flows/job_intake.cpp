#include "app/flows/job_intake.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace app {

void JobIntake::Take(std::vector<std::unique_ptr<FinishedJob>> jobs) {
  const Row* shown = uses_.selection.SingleRow();
  const uint64_t shownId = shown == nullptr ? 0 : shown->id;
  bool changesDetails = false;
  std::optional<std::u16string> pageToOpen;
  for (const auto& job : jobs) {
    TakeOne(*job);
    changesDetails = changesDetails || job->rowId == shownId;
    if (uses_.lookUp.WaitsFor(job->rowId)) pageToOpen = uses_.lookUp.Finish();
  }
  uses_.progress.MarkRunningRows(uses_.hashing.Snapshot());
  uses_.expected.Compare();
  if (changesDetails) uses_.details.Refresh();
  uses_.progress.Update();
  if (pageToOpen) uses_.shell.OpenAddress(*pageToOpen);
  // Last, because its message stays open until the user closes it.
  uses_.comparison.Finish();
}

void JobIntake::TakeOne(FinishedJob& job) {
  const auto index = uses_.rows.IndexOf(job.rowId);
  if (!index) return;  // removed meanwhile
  swr::HashOutcome& outcome = job.outcome;
  uses_.rows.UpdateAt(*index, [&](RowState& row) {
    row.pendingMask &= ~job.mask & swr::AllAlgosMask;
    if (outcome.cancelled) {
      if (row.pendingMask == 0) row.status = RowStatus::Cancelled;
    } else if (outcome.error != 0) {
      row.status = RowStatus::Failed;
      row.error = outcome.error;
      row.pendingMask = 0;
    } else {
      for (const swr::AlgoId id : swr::IdsFromMask(job.mask)) {
        row.digests.Set(swr::IndexOf(id), outcome.digests[swr::IndexOf(id)]);
      }
      row.changed = row.changed || outcome.changed;
      row.size = outcome.bytesRead;
      row.status = row.pendingMask == 0 ? RowStatus::Done : RowStatus::Waiting;
    }
  });
  uses_.list.RedrawRow(*index);
}

void JobIntake::OnTimer() {
  const WorkerSnapshot snapshot = uses_.hashing.Snapshot();
  uses_.progress.MarkRunningRows(snapshot);
  uses_.progress.Show(snapshot);
  if (snapshot.active || uses_.open.Any()) return;
  // The next ticks take the remaining finished jobs, even if announcing them failed.
  if (!snapshot.hasFinishedJobs) uses_.hashing.StopTimer();
  uses_.expected.Compare();
}

}  // namespace app
