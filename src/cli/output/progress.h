// How far a run has come, and the line that says so.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

#include "cli/output/console.h"

namespace cli {

// Counts from any thread; shows on one thread at a time.
class Progress {
 public:
  explicit Progress(Console& console);

  // A file that will be read, and that no further ones come.
  void AddExpected(uint64_t bytes);
  void EndExpected() { isComplete_.store(true, std::memory_order_relaxed); }

  // While files are read: the name of one that has begun, the bytes read since the last call, and
  // one that is done.
  void Begin(std::u16string_view name);
  void AddBytes(uint64_t bytes) { bytes_.fetch_add(bytes, std::memory_order_relaxed); }
  void EndFile() { files_.fetch_add(1, std::memory_order_relaxed); }

  bool IsShown() const { return isShown_; }
  // Shows the line, at most about ten times a second and not in the first moments.
  void Tick();

 private:
  std::u16string Line(double seconds);

  Console& console_;
  const bool isShown_;
  std::atomic<uint64_t> expectedBytes_ = 0;
  std::atomic<uint64_t> expectedFiles_ = 0;
  std::atomic<bool> isComplete_ = false;
  std::atomic<uint64_t> bytes_ = 0;
  std::atomic<uint64_t> files_ = 0;
  std::mutex mutex_;
  std::u16string name_;
  const std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point lastShown_;
};

}  // namespace cli
