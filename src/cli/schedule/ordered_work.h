// Work that is done on several threads and reported in the order in which it came up.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "swr/hash/digest_threads.h"
#include "swr/hash/file_hasher.h"

namespace cli {

// What a job works with. It belongs to one thread.
struct WorkTools {
  swr::FileHasher& hasher;
  const std::atomic<bool>& cancel;
};

// One piece of work.
class Job {
 public:
  virtual ~Job() = default;
  // Does the work, on any thread.
  virtual void Run(WorkTools& tools) = 0;
  // Tells what came of it. The jobs report one at a time, in the order in which they were
  // submitted, each after its Run, on any thread.
  virtual void Report() = 0;
};

class OrderedWork {
 public:
  // Takes a job; waits while as many as the capacity are not yet reported. False after a cancel.
  using Submit = std::function<bool(std::unique_ptr<Job>)>;

  // `threads`: how many jobs run at the same time, at least 1.
  explicit OrderedWork(uint32_t threads, size_t capacity = UsualCapacity);

  // Runs what `produce` submits until all is reported or the work is cancelled, and calls `tick`
  // on the calling thread about ten times a second meanwhile. `produce` runs on a thread of its own
  // beside the jobs. An exception of either ends the work and is thrown again here.
  void Run(const std::function<void(const Submit&)>& produce, const std::function<void()>& tick);

  // The same for one job, all on the calling thread.
  void RunOne(Job& job);

  // Ends the work early: no job is started or reported any more. Any thread.
  void Cancel() { cancel_.store(true, std::memory_order_relaxed); }
  const std::atomic<bool>& CancelFlag() const { return cancel_; }

  // Enough for the walk to be far ahead of the hashing, at a few hundred bytes each.
  static constexpr size_t UsualCapacity = 32768;

 private:
  struct State;

  void WorkOn(State& state);

  const uint32_t threads_;
  const size_t capacity_;
  std::atomic<bool> cancel_ = false;
  swr::DigestThreads digestThreads_;
};

}  // namespace cli
