// Asks the worker for the digests that rows lack.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/flows/options.h"
#include "app/rows/row_table.h"
#include "app/screen/progress_timer.h"
#include "app/worker/hash_queue.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/hash/algorithms.h"

namespace app {

class Hashing {
 public:
  // All must outlive the object.
  Hashing(RowTable& rows, HashQueue& queue, const Options& options, ProgressTimer& timer);

  // Asks for those digests of `mask` that the row lacks and that were not asked for yet. False when
  // there are none.
  bool QueueRow(uint64_t id, swr::AlgoMask mask);
  // Does so for every row, with the selected algorithms and, where a checksum file expects
  // something of the row, the algorithms that this may belong to.
  void QueueAll() { QueueFrom(0); }
  // The same for the rows from this index on.
  void QueueFrom(size_t first);
  // Does so for every row with the algorithms that the value may belong to; for rows that the user
  // cancelled only with `withCancelled`. False when there was nothing to ask for.
  bool QueueCandidates(const swr::ParsedHash& expected, bool withCancelled);

  // The only ways to remove rows while there may be jobs: a waiting job refers to its row's path,
  // so the jobs are taken back from the worker first. See RowTable::Remove.
  void RemoveRows(std::span<const uint64_t> ids);
  void RemoveAllRows();
  // Takes all jobs back; the rows that waited for them become cancelled.
  void CancelAll();

  WorkerSnapshot Snapshot() const { return queue_.GetSnapshot(); }
  // For work that the worker does not know of.
  void StartTimer();
  // To be called at a tick of the timer that finds no work.
  void StopTimer();

 private:
  // The job that gets the row these digests; from here on they count as asked for. Nothing when
  // there is nothing to do.
  std::optional<HashJob> JobFor(size_t index, swr::AlgoMask mask);
  bool QueueJobs(std::vector<HashJob> jobs);

  RowTable& rows_;
  HashQueue& queue_;
  const Options& options_;
  ProgressTimer& timer_;
  bool timerRuns_ = false;
};

}  // namespace app
