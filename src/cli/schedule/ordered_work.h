// Runs jobs on several threads and reports them in the order in which they were submitted.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "swr/hash/digest_threads.h"
#include "swr/hash/file_hasher.h"

namespace cli {

// The objects that jobs use, one set per thread.
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
  // Reports the result. Jobs report one at a time, in the order in which they were submitted, each
  // after its Run, on any thread.
  virtual void Report() = 0;
};

class OrderedWork {
 public:
  // Accepts a job; blocks while `capacity` jobs are not yet reported. False after a cancel.
  using Submit = std::function<bool(std::unique_ptr<Job>)>;

  // `threads`: how many jobs run at the same time, at least 1 (0 is raised to 1; so is a `capacity`
  // of 0).
  explicit OrderedWork(uint32_t threads, size_t capacity = DefaultCapacity);

  // Runs the jobs that `produce` submits until all are reported or the work is cancelled. Meanwhile
  // calls `tick` on the calling thread about ten times a second. `produce` runs on a thread of its
  // own. An exception from `produce` or a job ends the work and is rethrown here.
  void Run(const std::function<void(const Submit&)>& produce, const std::function<void()>& tick);

  // The same for one job, all on the calling thread.
  void RunOne(Job& job);

  // Ends the work early: no more jobs are started or reported. Called on any thread.
  void Cancel() { cancel_.store(true, std::memory_order_relaxed); }
  const std::atomic<bool>& CancelFlag() const { return cancel_; }

  // Lets the walk run far ahead of the hashing; a job takes a few hundred bytes.
  static constexpr size_t DefaultCapacity = 32768;

 private:
  struct State;

  void WorkOn(State& state);

  const uint32_t threads_;
  const size_t capacity_;
  std::atomic<bool> cancel_ = false;
  swr::DigestThreads digestThreads_;
};

}  // namespace cli
