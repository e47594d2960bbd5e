// The progress of a run, and the line that shows it.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

#include "cli/output/console.h"

namespace cli {

// The counting functions may be called on any thread, Tick on one thread at a time.
class Progress {
 public:
  explicit Progress(Console& console);

  // AddExpected adds a file that will be read; call EndExpected when there are no more.
  void AddExpected(uint64_t bytes);
  void EndExpected() { isComplete_.store(true, std::memory_order_relaxed); }

  // Reports that a file was started, that more bytes were read, or that a file is finished.
  void Begin(std::u16string_view name);
  void AddBytes(uint64_t bytes) { bytes_.fetch_add(bytes, std::memory_order_relaxed); }
  void EndFile() { files_.fetch_add(1, std::memory_order_relaxed); }

  bool IsShown() const { return isShown_; }
  // Shows the line at most about ten times a second, and not in the first half second.
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
