#include "cli/schedule/ordered_work.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace cli {

struct OrderedWork::State {
  struct Slot {
    std::unique_ptr<Job> job;
    bool isDone = false;
  };

  std::mutex mutex;
  std::condition_variable jobReady;   // for idle workers
  std::condition_variable roomReady;  // for the producer
  std::condition_variable over;       // for the caller
  // Jobs not yet reported, in order. Slots are added at the back and removed at the front, so
  // references to them stay valid.
  std::deque<Slot> slots;
  uint64_t reported = 0;  // the number of the job in the first slot
  uint64_t next = 0;      // the number of the next job to run
  bool isClosed = false;  // nothing more will be submitted
  bool isReporting = false;
  bool producerWaits = false;
  uint32_t idle = 0;     // workers that wait for a job
  uint32_t running = 0;  // threads that have not ended
  std::exception_ptr failure;

  bool HasJob() const { return next - reported < slots.size(); }
};

namespace {

// Records the first failure and cancels the work.
template <typename State>
void Fail(State& state, std::atomic<bool>& cancel) {
  const std::lock_guard lock(state.mutex);
  if (!state.failure) state.failure = std::current_exception();
  cancel.store(true, std::memory_order_relaxed);
}

}  // namespace

OrderedWork::OrderedWork(uint32_t threads, size_t capacity)
    : threads_(std::max(threads, 1u)),
      capacity_(std::max<size_t>(capacity, 1)),
      digestThreads_(threads_) {}

void OrderedWork::WorkOn(State& state) {
  swr::FileHasher hasher(digestThreads_);
  WorkTools tools{hasher, cancel_};
  const auto isCancelled = [&] { return cancel_.load(std::memory_order_relaxed); };
  std::unique_lock lock(state.mutex);
  while (true) {
    while (!state.HasJob() && !state.isClosed && !isCancelled()) {
      ++state.idle;
      state.jobReady.wait(lock);
      --state.idle;
    }
    if (isCancelled() || !state.HasJob()) break;
    State::Slot& slot = state.slots[static_cast<size_t>(state.next++ - state.reported)];
    lock.unlock();
    slot.job->Run(tools);
    lock.lock();
    slot.isDone = true;
    if (state.isReporting) continue;
    // The thread that finishes the first job reports it and all finished jobs that follow it, while
    // the other threads keep working.
    state.isReporting = true;
    std::vector<std::unique_ptr<Job>> done;
    while (!state.slots.empty() && state.slots.front().isDone && !isCancelled()) {
      while (!state.slots.empty() && state.slots.front().isDone) {
        done.push_back(std::move(state.slots.front().job));
        state.slots.pop_front();
        ++state.reported;
      }
      if (state.producerWaits && state.slots.size() <= capacity_ / 2) {
        state.producerWaits = false;
        state.roomReady.notify_one();
      }
      lock.unlock();
      for (const std::unique_ptr<Job>& job : done) {
        if (!isCancelled()) job->Report();
      }
      done.clear();
      lock.lock();
    }
    state.isReporting = false;
  }
}

void OrderedWork::Run(const std::function<void(const Submit&)>& produce,
                      const std::function<void()>& tick) {
  State state;
  const auto isCancelled = [&] { return cancel_.load(std::memory_order_relaxed); };
  const Submit submit = [&](std::unique_ptr<Job> job) {
    std::unique_lock lock(state.mutex);
    while (state.slots.size() >= capacity_ && !isCancelled()) {
      state.producerWaits = true;
      state.roomReady.wait(lock);
    }
    if (isCancelled()) return false;
    state.slots.push_back({.job = std::move(job)});
    if (state.idle > 0) state.jobReady.notify_one();
    return true;
  };
  // Runs one thread's part and signals its end.
  const auto guarded = [&](const std::function<void()>& part) {
    try {
      part();
    } catch (...) {
      Fail(state, cancel_);
    }
    const std::lock_guard lock(state.mutex);
    --state.running;
    state.over.notify_one();
  };

  std::vector<std::thread> threads;
  threads.reserve(threads_ + 1);
  const auto start = [&](std::function<void()> part) {
    {
      const std::lock_guard lock(state.mutex);
      ++state.running;
    }
    try {
      threads.emplace_back([&guarded, part = std::move(part)] { guarded(part); });
    } catch (...) {
      const std::lock_guard lock(state.mutex);
      --state.running;
      throw;
    }
  };
  try {
    start([&] {
      produce(submit);
      const std::lock_guard lock(state.mutex);
      state.isClosed = true;
      state.jobReady.notify_all();
    });
    for (uint32_t i = 0; i < threads_; ++i) start([&] { WorkOn(state); });
  } catch (...) {
    Fail(state, cancel_);
  }

  constexpr std::chrono::milliseconds pause(100);
  std::unique_lock lock(state.mutex);
  while (state.running > 0) {
    state.over.wait_for(lock, pause);
    // A cancel can come from any thread and notifies nobody.
    if (isCancelled()) {
      state.jobReady.notify_all();
      state.roomReady.notify_all();
    }
    lock.unlock();
    tick();
    lock.lock();
  }
  lock.unlock();
  for (std::thread& thread : threads) thread.join();
  if (state.failure) std::rethrow_exception(state.failure);
}

void OrderedWork::RunOne(Job& job) {
  swr::FileHasher hasher(digestThreads_);
  WorkTools tools{hasher, cancel_};
  job.Run(tools);
  if (!cancel_.load(std::memory_order_relaxed)) job.Report();
}

}  // namespace cli
