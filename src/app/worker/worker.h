// The one background thread that hashes files for the window: its queue, the cancel protocol and
// the figures behind the progress display. One file at a time; the parallelism inside a file is
// HashFile's.
#pragma once

#include <atomic>
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
#include "swr/hash/hash_file.h"

namespace app {

// One finished job.
struct ResultMessage {
  uint64_t rowId = 0;
  swr::AlgoMask mask = 0;  // the job's
  // The job's; it goes back to the thread that made it, because freeing it on the worker's would
  // have both wait for the same heap.
  std::u16string path;
  swr::HashOutcome outcome;
};

// Where the worker reports to, on its own thread unless it says otherwise.
class WorkerSink {
 public:
  virtual ~WorkerSink() = default;
  // Takes the record over. Called with the worker's lock held, so it must neither wait for the
  // window's thread nor call the worker.
  virtual void AddResult(std::unique_ptr<ResultMessage> result) = 0;
  // Tells the window of what was added. Called without a lock.
  virtual void AnnounceResults() = 0;
  // Says that bytes moved on. Called without a lock, and not again before
  // Worker::AcknowledgeProgress.
  virtual void PostProgress() = 0;
  // Whether a result that was added has not been taken over yet. Called on any thread, with the
  // worker's lock held.
  virtual bool HoldsResults() const = 0;
};

// All but the thread's own body is called on the window's thread.
class Worker final : public HashQueue {
 public:
  // Milliseconds from any fixed moment, never running backwards.
  using TickFunction = std::function<uint64_t()>;

  // Starts the thread. The sink must outlive the worker.
  explicit Worker(WorkerSink& sink, TickFunction ticks = SystemTicks);
  // Drops the queue, cancels the running job and waits for the thread.
  ~Worker() override;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  void Enqueue(HashJob job) override;
  void EnqueueAll(std::vector<HashJob> jobs) override;
  void Remove(std::span<const uint64_t> rowIds) override;
  void CancelAll() override;
  WorkerSnapshot GetSnapshot() const override;
  // To be called for each PostProgress, so that at most one is ever on its way.
  void AcknowledgeProgress() { progressPosted_ = false; }

 private:
  static uint64_t SystemTicks();
  void Run();
  // These three under mutex_.
  bool IsQueueEmpty() const { return next_ == queue_.size(); }
  void DropQueue();
  void DropTakenJobs();
  void RunJob(HashJob job);
  void OnBytesRead(uint64_t bytes);

  WorkerSink& sink_;
  TickFunction ticks_;

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  // From here to batchStartTick_: under mutex_.
  // The jobs from `next_` on wait. Those before it are empty shells, thrown away on the window's
  // thread: the two threads would wait for the same heap if each freed what the other has made.
  std::vector<HashJob> queue_;
  size_t next_ = 0;
  bool stop_ = false;
  bool busy_ = false;
  uint64_t currentId_ = 0;
  std::u16string currentPath_;
  uint64_t currentSize_ = 0;
  uint64_t doneBytes_ = 0;
  uint64_t totalBytes_ = 0;
  uint64_t batchStartTick_ = 0;

  std::atomic<uint64_t> currentBytes_ = 0;
  // Set under mutex_ and only while busy_, cleared under it when a job is taken: a cancel is
  // neither lost nor carried over to the next job. HashFile reads it without the lock.
  std::atomic<bool> cancel_ = false;
  std::atomic<bool> progressPosted_ = false;

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace app
