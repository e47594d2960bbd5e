// The threads that help FileHashers to digest long files. One object serves a whole front end: its
// hashers share the threads, and a core that one of them leaves idle goes to another's file.
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

// Work that threads can join and leave while it goes on.
class HelpedWork {
 public:
  virtual ~HelpedWork() = default;
  // Does a share of the work and returns when there is none left. Called on any number of threads
  // at once.
  virtual void Help() = 0;

 private:
  friend class DigestThreads;
  size_t helpers_ = 0;  // threads in Help() or on their way to it; under DigestThreads::mutex_
};

// All functions may be called on any thread.
class DigestThreads {
 public:
  // One for each core, and at least two, so that a file can be read ahead on a single core too.
  static uint32_t UsualLimit();

  // `limit`: how many threads may be hashing at the same time, counting the callers of FileHashers.
  // With 1, or with as many callers at work as the limit, every caller hashes on its own. No thread
  // is started before a file needs it.
  explicit DigestThreads(uint32_t limit = UsualLimit());
  // Ends the threads. No FileHasher may still use them.
  ~DigestThreads();
  DigestThreads(const DigestThreads&) = delete;
  DigestThreads& operator=(const DigestThreads&) = delete;

  // Ends the threads that wait for a file, and waits until they have ended. They are started again
  // as they are needed.
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
  // Helpers leave their work then: a caller has come back for the core that they were given.
  bool IsAboveLimit() const { return atWork_.load(std::memory_order_relaxed) > limit_; }

  // Has one more thread call `work.Help()`, unless the limit is reached or the work has `most`
  // helpers. Throws std::system_error, without any effect, when a thread can't be started.
  bool Lend(HelpedWork& work, size_t most);
  // Returns when no thread is in `work.Help()` or will enter it. The work must have told its
  // helpers to return.
  void TakeBack(HelpedWork& work);

 private:
  void ThreadMain();
  void EndThisThread();

  const uint32_t limit_;
  std::atomic<uint32_t> atWork_ = 0;  // callers and lent threads

  std::mutex mutex_;
  std::condition_variable wake_;      // for threads without work
  std::condition_variable returned_;  // a work has lost its last helper
  std::condition_variable ended_;     // a thread has ended
  // From here on: under mutex_. There are at least as many waiting threads as requests and threads
  // that are to end.
  std::deque<HelpedWork*> requests_;
  std::vector<std::thread> threads_;
  std::vector<std::thread> endedThreads_;  // to be joined
  size_t waiting_ = 0;
  size_t toEnd_ = 0;
  bool stop_ = false;
};

}  // namespace swr
