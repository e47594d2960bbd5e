// The threads that help FileHashers to digest long files. One object serves a whole front end: its
// hashers share the threads, and a core that one of them leaves idle goes to another's file.
#pragma once

#include <cstdint>

namespace swr {

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

  // Ends the threads that wait for a file. May be called at any time, on any thread; threads are
  // started again as they are needed.
  void EndIdleThreads();

  uint32_t Limit() const { return limit_; }

 private:
  const uint32_t limit_;
};

}  // namespace swr
