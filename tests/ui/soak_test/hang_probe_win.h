// Checks all the time whether a window still answers.
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
  // Called on a thread of its own for each slow answer: after what time it came, and how much of
  // that time the machine was stalled.
  using SlowAnswer = std::function<void(std::chrono::milliseconds, std::chrono::milliseconds)>;
  HangProbe(HWND window, SlowAnswer tell);
  ~HangProbe();
  HangProbe(const HangProbe&) = delete;
  HangProbe& operator=(const HangProbe&) = delete;

  size_t Questions() const { return questions_; }
  // Without the time for which the machine, and Wine with it, was stalled: that shows in a thread
  // that only sleeps and then wakes up late.
  std::chrono::milliseconds LongestAnswer() const { return std::chrono::milliseconds(longest_); }
  std::chrono::milliseconds LongestPause() const { return std::chrono::milliseconds(pause_); }

 private:
  void Ask(HWND window, const SlowAnswer& tell);
  void Sleep();

  std::atomic<bool> ends_ = false;
  std::atomic<size_t> questions_ = 0;
  std::atomic<long long> longest_ = 0;
  std::atomic<long long> pause_ = 0;
  std::atomic<long long> pauses_ = 0;  // all together
  std::thread asking_;                 // last: they use all of the above
  std::thread sleeping_;
};

}  // namespace app::testing
