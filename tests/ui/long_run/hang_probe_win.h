// Asks a window all the time whether it still answers.
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
  // Calls `hung` on a thread of its own, once, when the window has not answered for so long.
  HangProbe(HWND window, std::chrono::milliseconds longest, std::function<void()> hung);
  ~HangProbe();
  HangProbe(const HangProbe&) = delete;
  HangProbe& operator=(const HangProbe&) = delete;

  size_t Questions() const { return questions_; }
  // Without the time for which the machine itself stood still meanwhile: a thread that does nothing
  // but sleep tells.
  std::chrono::milliseconds LongestAnswer() const { return std::chrono::milliseconds(longest_); }
  std::chrono::milliseconds LongestPause() const { return std::chrono::milliseconds(pause_); }

 private:
  void Ask(HWND window, std::chrono::milliseconds longest, const std::function<void()>& hung);
  void Sleep();

  std::atomic<bool> ends_ = false;
  std::atomic<size_t> questions_ = 0;
  std::atomic<long long> longest_ = 0;
  std::atomic<long long> pause_ = 0;
  std::atomic<long long> pauses_ = 0;  // all together
  std::thread asking_;  // last: they use all of the above
  std::thread sleeping_;
};

}  // namespace app::testing
