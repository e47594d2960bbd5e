// The threads that help FileHashers to digest long files. One object serves a whole front end: its
// FileHashers share the threads, so that a core left idle by one of them can work on the file of
// another.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace swr {

// Work that threads can join and leave while it is in progress.
class HelpedWork {
 public:
  virtual ~HelpedWork() = default;
  // Does a share of the work and returns when none is left. Called on any number of threads at
  // once.
  virtual void Help() = 0;

 private:
  friend class DigestThreads;
  size_t helpers_ = 0;  // threads in Help() or on their way to it; under DigestThreads::mutex_
};

// All functions may be called on any thread.
class DigestThreads {
 public:
  // One for each core, but at least two, so that files are read ahead on a single core too.
  static uint32_t DefaultLimit();

  // `limit`: how many threads may be hashing at the same time, including the callers of
  // FileHashers. When that many callers are hashing, each works without help; with a limit of 1
  // that is always the case. Threads are started when a file first needs them.
  explicit DigestThreads(uint32_t limit = DefaultLimit());
  // Ends the threads. No FileHasher may be using them any more.
  ~DigestThreads();
  DigestThreads(const DigestThreads&) = delete;
  DigestThreads& operator=(const DigestThreads&) = delete;

  // Ends the threads that have no work, and waits for that. New ones are started when needed.
  void EndIdleThreads();

  uint32_t Limit() const { return limit_; }

  // --- For FileHashers

  // Counts the calling thread as hashing for as long as the object exists.
  class CallerAtWork {
   public:
    explicit CallerAtWork(DigestThreads& threads) : threads_(threads) { ++threads_.atWork_; }
    ~CallerAtWork() { --threads_.atWork_; }
    CallerAtWork(const CallerAtWork&) = delete;
    CallerAtWork& operator=(const CallerAtWork&) = delete;

   private:
    DigestThreads& threads_;
  };

  bool IsBelowLimit() const { return atWork_.load(std::memory_order_relaxed) < limit_; }
  // True if a caller has started to hash while all cores were lent: a helper then leaves its work.
  bool IsAboveLimit() const { return atWork_.load(std::memory_order_relaxed) > limit_; }

  // Makes one more thread call `work.Help()` and returns true, unless the limit is reached or the
  // work already has `most` helpers. Throws std::system_error, with no effect, if a thread can't be
  // started.
  bool Lend(HelpedWork& work, size_t most);
  // Returns when no thread is in `work.Help()` or about to enter it. The caller makes sure that the
  // helpers return.
  void TakeBack(HelpedWork& work);

 private:
  void ThreadMain();
  void EndThisThread();

  const uint32_t limit_;
  std::atomic<uint32_t> atWork_ = 0;  // callers and lent threads

  std::mutex mutex_;
  std::condition_variable wake_;      // wakes idle threads
  std::condition_variable returned_;  // the last helper has left its work
  std::condition_variable ended_;     // a thread has ended
  // The rest is under mutex_. There are always at least as many waiting threads as requests and
  // threads that are to end.
  std::deque<HelpedWork*> requests_;
  std::vector<std::thread> threads_;
  std::vector<std::thread> endedThreads_;  // to be joined
  size_t waiting_ = 0;
  size_t toEnd_ = 0;
  bool stop_ = false;
};

}  // namespace swr
