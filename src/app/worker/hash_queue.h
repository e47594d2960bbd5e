// Background hashing as the flows see it: they queue jobs and read the progress.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/rows/shared_path.h"
#include "swr/hash/algorithms.h"

namespace app {

// Small and without memory on the heap, because a list can need a job for each of a million rows.
struct HashJob {
  uint64_t rowId = 0;
  // The row's own path. It must exist for as long as the job is in the queue, so a row's jobs are
  // removed before the row. A running job has copied it.
  const SharedPath* path = nullptr;
  swr::AlgoMask mask = 0;
  uint64_t size = 0;  // bytes, as known when the job was made; for the totals only
};

// The progress at one moment. A batch begins when an idle worker gets a job, and lasts until the
// next time that happens.
struct WorkerSnapshot {
  bool active = false;           // a job is running or waiting
  bool hasFinishedJobs = false;  // the window has not taken every finished job yet
  uint64_t currentRowId = 0;     // of the running job; 0 between jobs
  std::u16string currentPath;    // of the running job; empty between jobs
  uint64_t currentBytes = 0;     // read so far of the running job
  uint64_t currentSize = 0;      // the running job's size as it was queued
  uint64_t doneBytes = 0;        // sizes of the batch's finished jobs plus currentBytes
  uint64_t totalBytes = 0;       // sizes of all jobs of the batch; never below doneBytes
  uint64_t remainingJobs = 0;    // including the running one
  double bytesPerSecond = 0;     // average over the batch; 0 in its first 500 ms
};

// Called on the window's thread only.
class HashQueue {
 public:
  virtual ~HashQueue() = default;
  virtual void Enqueue(HashJob job) = 0;
  // Adds them in this order, and wakes the worker once.
  virtual void EnqueueAll(std::vector<HashJob> jobs) = 0;
  // Drops the waiting jobs of these rows, and cancels the running job if it is for one of them; a
  // cancelled job is still reported. Goes over the queue once, however many rows there are. An id
  // may occur more than once, or have no job.
  virtual void Remove(std::span<const uint64_t> rowIds) = 0;
  // Drops the whole queue and cancels the running job, which is still reported.
  virtual void CancelAll() = 0;
  virtual WorkerSnapshot GetSnapshot() const = 0;
};

}  // namespace app
