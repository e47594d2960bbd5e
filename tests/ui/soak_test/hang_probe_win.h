// Continuously checks whether a window responds.
#pragma once

#include "swr/system/windows_api_win.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <thread>

namespace app::testing {

class HangProbe {
 public:
  // Called on a separate thread for each slow answer, with the time it took and how much of that
  // the machine was stalled.
  using SlowAnswer = std::function<void(std::chrono::milliseconds, std::chrono::milliseconds)>;
  HangProbe(HWND window, SlowAnswer report);
  ~HangProbe();
  HangProbe(const HangProbe&) = delete;
  HangProbe& operator=(const HangProbe&) = delete;

  size_t Requests() const { return requests_; }
  // Excludes the time for which the machine, and Wine with it, was stalled. A thread that only
  // sleeps measures that by waking up late.
  std::chrono::milliseconds LongestAnswer() const { return std::chrono::milliseconds(longest_); }
  std::chrono::milliseconds LongestPause() const { return std::chrono::milliseconds(pause_); }

 private:
  void Probe(HWND window, const SlowAnswer& report);
  void Sleep();

  std::atomic<bool> ends_ = false;
  std::atomic<size_t> requests_ = 0;
  std::atomic<long long> longest_ = 0;
  std::atomic<long long> pause_ = 0;
  std::atomic<long long> pauses_ = 0;  // in total
  std::thread probing_;                // last: they use all of the above
  std::thread sleeping_;
};

}  // namespace app::testing
