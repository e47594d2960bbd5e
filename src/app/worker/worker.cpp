#include "app/worker/worker.h"

#include <algorithm>
#include <chrono>
#include <unordered_set>
#include <utility>

#include "swr/system/thread_schedule.h"

namespace app {

Worker::Worker(WorkerSink& sink, TickFunction ticks)
    : sink_(sink), ticks_(std::move(ticks)), thread_([this] { Run(); }) {}

Worker::~Worker() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
    queue_.clear();
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

void Worker::Enqueue(HashJob job) {
  {
    const std::lock_guard lock(mutex_);
    if (!busy_ && queue_.empty()) {
      doneBytes_ = 0;
      totalBytes_ = 0;
      batchStartTick_ = ticks_();
    }
    totalBytes_ += job.size;
    queue_.push_back(std::move(job));
  }
  wake_.notify_one();
}

void Worker::Remove(std::span<const uint64_t> rowIds) {
  const std::unordered_set<uint64_t> removed(rowIds.begin(), rowIds.end());
  const std::lock_guard lock(mutex_);
  std::erase_if(queue_, [&](const HashJob& job) {
    if (!removed.contains(job.rowId)) return false;
    totalBytes_ -= std::min(job.size, totalBytes_);
    return true;
  });
  if (busy_ && removed.contains(currentId_)) cancel_ = true;
}

void Worker::CancelAll() {
  const std::lock_guard lock(mutex_);
  queue_.clear();
  if (busy_) cancel_ = true;
}

WorkerSnapshot Worker::GetSnapshot() const {
  const std::lock_guard lock(mutex_);
  WorkerSnapshot snapshot{.active = busy_ || !queue_.empty(),
                          .currentPath = currentPath_,
                          .currentBytes = busy_ ? currentBytes_.load() : 0,
                          .currentSize = currentSize_};
  snapshot.doneBytes = doneBytes_ + snapshot.currentBytes;
  // A file that grew can't push the figure past the total.
  snapshot.totalBytes = std::max(totalBytes_, snapshot.doneBytes);
  snapshot.remainingJobs = queue_.size() + (busy_ ? 1 : 0);
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
    wake_.wait(lock, [this] { return stop_ || !queue_.empty(); });
    // Stop wins over queued work.
    if (stop_) return;
    const HashJob job = std::move(queue_.front());
    queue_.pop_front();
    busy_ = true;
    currentId_ = job.rowId;
    currentPath_ = job.path;
    currentSize_ = job.size;
    currentBytes_ = 0;
    cancel_ = false;
    lock.unlock();
    RunJob(job);
    lock.lock();
  }
}

void Worker::RunJob(const HashJob& job) {
  const swr::HashOptions options{.cancel = &cancel_,
                                 .progress = [this](uint64_t bytes) { OnBytesRead(bytes); }};
  auto result = std::make_unique<ResultMessage>();
  result->rowId = job.rowId;
  result->mask = job.mask;
  result->outcome = swr::HashFile(job.path, job.mask, options);
  {
    const std::lock_guard lock(mutex_);
    busy_ = false;
    currentPath_.clear();
    doneBytes_ += job.size;
  }
  sink_.PostResult(std::move(result));
}

void Worker::OnBytesRead(uint64_t bytes) {
  currentBytes_ = bytes;
  if (!progressPosted_.exchange(true)) sink_.PostProgress();
}

}  // namespace app
