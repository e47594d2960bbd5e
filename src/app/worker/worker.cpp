#include "app/worker/worker.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "app/rows/row_id_set.h"
#include "swr/system/thread_schedule.h"

namespace app {

Worker::Worker(WorkerSink& sink, TickFunction ticks, std::chrono::milliseconds rest)
    : sink_(sink), ticks_(std::move(ticks)), rest_(rest), thread_([this] { Run(); }) {}

Worker::~Worker() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
    DropQueue();
    cancel_ = true;
  }
  wake_.notify_all();
  thread_.join();
}

uint64_t Worker::SystemTicks() {
  using std::chrono::duration_cast, std::chrono::milliseconds, std::chrono::steady_clock;
  return static_cast<uint64_t>(
      duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void Worker::Enqueue(HashJob job) { EnqueueAll({job}); }

void Worker::EnqueueAll(std::vector<HashJob> jobs) {
  if (jobs.empty()) return;
  {
    const std::lock_guard lock(mutex_);
    if (!busy_ && IsQueueEmpty()) {
      doneBytes_ = 0;
      totalBytes_ = 0;
      batchStartTick_ = ticks_();
    }
    // The condition ensures that this moves no more jobs than it drops.
    if (2 * next_ >= queue_.size()) DropTakenJobs();
    for (const HashJob& job : jobs) totalBytes_ += job.size;
    if (queue_.empty()) {
      queue_ = std::move(jobs);
    } else {
      queue_.insert(queue_.end(), jobs.begin(), jobs.end());
    }
  }
  wake_.notify_one();
}

void Worker::DropQueue() {
  queue_.clear();
  next_ = 0;
}

void Worker::DropTakenJobs() {
  queue_.erase(queue_.begin(), queue_.begin() + static_cast<ptrdiff_t>(next_));
  next_ = 0;
}

void Worker::Remove(std::span<const uint64_t> rowIds) {
  const RowIdSet removed(rowIds);
  const std::lock_guard lock(mutex_);
  DropTakenJobs();
  std::erase_if(queue_, [&](const HashJob& job) {
    if (!removed.Contains(job.rowId)) return false;
    totalBytes_ -= std::min(job.size, totalBytes_);
    return true;
  });
  if (busy_ && removed.Contains(currentId_)) cancel_ = true;
}

void Worker::CancelAll() {
  const std::lock_guard lock(mutex_);
  DropQueue();
  if (busy_) cancel_ = true;
}

WorkerSnapshot Worker::GetSnapshot() const {
  const std::lock_guard lock(mutex_);
  WorkerSnapshot snapshot{.active = busy_ || !IsQueueEmpty(),
                          .hasFinishedJobs = sink_.HoldsFinished(),
                          .currentRowId = busy_ ? currentId_ : 0,
                          .currentPath = currentPath_,
                          .currentBytes = busy_ ? currentBytes_.load() : 0,
                          .currentSize = currentSize_};
  snapshot.doneBytes = doneBytes_ + snapshot.currentBytes;
  // A file that has grown must not push the figure past the total.
  snapshot.totalBytes = std::max(totalBytes_, snapshot.doneBytes);
  snapshot.remainingJobs = queue_.size() - next_ + (busy_ ? 1 : 0);
  const uint64_t elapsed = ticks_() - batchStartTick_;
  if (elapsed > 500) {
    snapshot.bytesPerSecond =
        static_cast<double>(snapshot.doneBytes) * 1000.0 / static_cast<double>(elapsed);
  }
  return snapshot;
}

void Worker::Run() {
  swr::PreferThroughput();
  std::unique_lock lock(mutex_);
  while (true) {
    WaitForWork(lock);
    // Stopping takes precedence over queued jobs.
    if (stop_) return;
    const HashJob job = queue_[next_++];
    busy_ = true;
    currentId_ = job.rowId;
    job.path->AppendTo(currentPath_);
    currentSize_ = job.size;
    currentBytes_ = 0;
    cancel_ = false;
    lock.unlock();
    RunJob(job);
    lock.lock();
  }
}

void Worker::WaitForWork(std::unique_lock<std::mutex>& lock) {
  const auto hasWork = [this] { return stop_ || !IsQueueEmpty(); };
  if (wake_.wait_for(lock, rest_, hasWork)) return;
  lock.unlock();
  hasher_.ReleaseMemory();
  digestThreads_.EndIdleThreads();
  lock.lock();
  wake_.wait(lock, hasWork);
}

void Worker::RunJob(const HashJob& job) {
  const swr::HashOptions options{.cancel = &cancel_,
                                 .progress = [this](uint64_t bytes) { OnBytesRead(bytes); }};
  auto finished = std::make_unique<FinishedJob>();
  finished->rowId = job.rowId;
  finished->mask = job.mask;
  finished->outcome = hasher_.HashFile(currentPath_, job.mask, options);
  {
    const std::lock_guard lock(mutex_);
    busy_ = false;
    currentPath_.clear();
    doneBytes_ += job.size;
    // Under the lock: otherwise a snapshot taken in between would show the job neither as running
    // nor as finished.
    sink_.AddFinished(std::move(finished));
  }
  sink_.AnnounceFinished();
}

void Worker::OnBytesRead(uint64_t bytes) {
  currentBytes_ = bytes;
  if (!progressPosted_.exchange(true)) sink_.PostProgress();
}

}  // namespace app
