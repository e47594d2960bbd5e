// What the window asks of background hashing: jobs in, figures out.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct HashJob {
  uint64_t rowId = 0;
  std::u16string path;
  swr::AlgoMask mask = 0;
  uint64_t size = 0;  // bytes, as known when the job was made; for the totals only
};

// The figures at one moment. A batch begins when an idle worker with an empty queue gets a job, and
// lasts until the next such moment.
struct WorkerSnapshot {
  bool active = false;         // a job runs or waits
  bool resultsWait = false;    // a finished job's result has not reached the window yet
  std::u16string currentPath;  // of the running job; empty between jobs
  uint64_t currentBytes = 0;   // read so far of the running job
  uint64_t currentSize = 0;    // the running job's size as it was queued
  uint64_t doneBytes = 0;      // sizes of the batch's finished jobs, and currentBytes
  uint64_t totalBytes = 0;     // sizes of all jobs of the batch; never below doneBytes
  uint64_t remainingJobs = 0;  // with the running one
  double bytesPerSecond = 0;   // average over the batch; 0 in its first 500 ms
};

// Called on the window's thread only.
class HashQueue {
 public:
  virtual ~HashQueue() = default;
  virtual void Enqueue(HashJob job) = 0;
  // Many at once, in this order: costs the worker one interruption.
  virtual void EnqueueAll(std::vector<HashJob> jobs) = 0;
  // Drops the queued jobs of these rows without a message, and cancels the job that runs on one of
  // them, whose result still comes. Costs one walk over the queue, however many rows.
  virtual void Remove(std::span<const uint64_t> rowIds) = 0;
  // Drops the whole queue and cancels the running job, whose result still comes.
  virtual void CancelAll() = 0;
  virtual WorkerSnapshot GetSnapshot() const = 0;
};

}  // namespace app
