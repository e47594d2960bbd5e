// Queues jobs for the digests that rows lack.
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

  // Queues the digests of `mask` that the row lacks and that are not queued yet. False if there are
  // none.
  bool QueueRow(uint64_t id, swr::AlgoMask mask);
  // The same for every row, with the selected algorithms and, if a checksum file lists the row, the
  // candidates of its expected digest.
  void QueueAll() { QueueFrom(0); }
  // The same for the rows from this index on.
  void QueueFrom(size_t first);
  // The same for every row with the algorithms that the value may belong to. Skips rows that the
  // user cancelled, unless `withCancelled`. False if nothing was queued.
  bool QueueCandidates(const swr::ParsedHash& expected, bool withCancelled);

  // The only ways to remove rows while there may be jobs: a waiting job refers to its row's path,
  // so the jobs are dropped first. See RowTable::Remove.
  void RemoveRows(std::span<const uint64_t> ids);
  void RemoveAllRows();
  // Drops all jobs; the rows that were waiting for them become cancelled.
  void CancelAll();

  WorkerSnapshot Snapshot() const { return queue_.GetSnapshot(); }
  // To be called for other work that needs the timer.
  void StartTimer();
  // To be called at a tick of the timer that finds no work.
  void StopTimer();

 private:
  // A job for those of the digests that QueueRow would queue, which it marks as pending. Nothing if
  // there are none.
  std::optional<HashJob> JobFor(size_t index, swr::AlgoMask mask);
  bool QueueJobs(std::vector<HashJob> jobs);

  RowTable& rows_;
  HashQueue& queue_;
  const Options& options_;
  ProgressTimer& timer_;
  bool timerRuns_ = false;
};

}  // namespace app
