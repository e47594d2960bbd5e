// Simulates a system call that does not return.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace swr::testing {

// Blocks every thread that calls Pass until Open is called.
class Gate {
 public:
  void Pass() {
    std::unique_lock lock(mutex_);
    ++arrived_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return open_; });
  }
  void Open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    changed_.notify_all();
  }
  // Returns when a thread is blocked here; the test fails if none comes.
  void WaitForArrival() {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, std::chrono::minutes(1), [this] { return arrived_ > 0; }));
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool open_ = false;
  int arrived_ = 0;
};

}  // namespace swr::testing
