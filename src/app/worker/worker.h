// The background thread that hashes files for the window, with its queue, its cancel protocol and
// the figures for the progress display. It hashes one file at a time; FileHasher computes several
// digests of a file in parallel.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "app/worker/hash_queue.h"
#include "swr/hash/algorithms.h"
#include "swr/hash/file_hasher.h"

namespace app {

// One finished job.
struct FinishedJob {
  uint64_t rowId = 0;
  swr::AlgoMask mask = 0;  // the job's
  swr::HashOutcome outcome;
};

// Receives the worker's reports, on the worker's thread unless stated otherwise.
class WorkerSink {
 public:
  virtual ~WorkerSink() = default;
  // Called with the worker's lock held, so it must neither wait for the window's thread nor call
  // the worker.
  virtual void AddFinished(std::unique_ptr<FinishedJob> job) = 0;
  // Notifies the window of added jobs. Called without a lock.
  virtual void AnnounceFinished() = 0;
  // More bytes were read. Called without a lock, and not again before Worker::AcknowledgeProgress.
  virtual void PostProgress() = 0;
  // Whether a job that was added has not been taken yet. Called on any thread, with the worker's
  // lock held.
  virtual bool HoldsFinished() const = 0;
};

// Its public functions are called on the window's thread.
class Worker final : public HashQueue {
 public:
  // Milliseconds since some fixed moment; never decreases.
  using TickFunction = std::function<uint64_t()>;

  // Starts the thread. The sink must outlive the worker. After `rest` without a job the memory and
  // the threads that are kept for the next file are freed.
  explicit Worker(WorkerSink& sink, TickFunction ticks = SystemTicks,
                  std::chrono::milliseconds rest = std::chrono::minutes(1));
  // Drops the queue, cancels the running job and waits for the thread.
  ~Worker() override;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  void Enqueue(HashJob job) override;
  void EnqueueAll(std::vector<HashJob> jobs) override;
  void Remove(std::span<const uint64_t> rowIds) override;
  void CancelAll() override;
  WorkerSnapshot GetSnapshot() const override;
  // Call once for each PostProgress, so that at most one message is pending.
  void AcknowledgeProgress() { progressPosted_ = false; }

 private:
  static uint64_t SystemTicks();
  void Run();
  // The next three are called under mutex_.
  bool IsQueueEmpty() const { return next_ == queue_.size(); }
  void DropQueue();
  void DropTakenJobs();
  void WaitForWork(std::unique_lock<std::mutex>& lock);
  void RunJob(const HashJob& job);
  void OnBytesRead(uint64_t bytes);

  WorkerSink& sink_;
  TickFunction ticks_;
  const std::chrono::milliseconds rest_;
  // Used by the worker's thread only.
  swr::DigestThreads digestThreads_;
  swr::FileHasher hasher_{digestThreads_};

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  // Guarded by mutex_, from here to batchStartTick_. The jobs from `next_` on are waiting; those
  // before it have been taken.
  std::vector<HashJob> queue_;
  size_t next_ = 0;
  bool stop_ = false;
  bool busy_ = false;
  uint64_t currentId_ = 0;
  std::u16string currentPath_;  // written by the worker's thread only; empty between jobs
  uint64_t currentSize_ = 0;
  uint64_t doneBytes_ = 0;
  uint64_t totalBytes_ = 0;
  uint64_t batchStartTick_ = 0;

  std::atomic<uint64_t> currentBytes_ = 0;
  // Set under mutex_ and only while busy_; cleared under mutex_ when a job is taken. So a cancel is
  // neither lost nor carried over to the next job. FileHasher reads it without the lock.
  std::atomic<bool> cancel_ = false;
  std::atomic<bool> progressPosted_ = false;

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace app
