#include "swr/system/detached_thread.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

#include "tests/support/fault_plan.h"

namespace swr::testing {
namespace {

constexpr std::chrono::minutes LongTime{2};

TEST(DetachedThreadTest, RunsOnAnotherThread) {
  const auto thread = std::make_shared<std::promise<std::thread::id>>();
  ASSERT_TRUE(StartDetachedThread([thread] { thread->set_value(std::this_thread::get_id()); }));
  std::future<std::thread::id> id = thread->get_future();
  ASSERT_EQ(id.wait_for(LongTime), std::future_status::ready);
  EXPECT_NE(id.get(), std::this_thread::get_id());
}

TEST(DetachedThreadTest, IsNotStartedWhereTheSystemHasNone) {
  const auto runs = std::make_shared<std::atomic<int>>(0);
  const InstalledFaults faults({{.call = SystemCall::StartThread, .code = 8}});
  EXPECT_FALSE(StartDetachedThread([runs] { ++*runs; }));
  EXPECT_EQ(*runs, 0);
}

// Keeps the processors busy while the object exists.
class BusyThreads {
 public:
  BusyThreads() {
    for (std::thread& thread : threads_) {
      thread = std::thread([this] {
        while (!ends_) {
        }
      });
    }
  }
  ~BusyThreads() {
    ends_ = true;
    for (std::thread& thread : threads_) thread.join();
  }
  BusyThreads(const BusyThreads&) = delete;
  BusyThreads& operator=(const BusyThreads&) = delete;

 private:
  std::atomic<bool> ends_ = false;
  std::array<std::thread, 2> threads_;
};

// On a busy machine a thread can end before the one that starts it continues.
TEST(DetachedThreadTest, ManyShortOnesAllRun) {
  const BusyThreads busy;
  const auto runs = std::make_shared<std::atomic<int>>(0);
  const auto deadline = std::chrono::steady_clock::now() + LongTime;
  constexpr int rounds = 300;
  constexpr int threadsPerRound = 2;
  for (int round = 1; round <= rounds; ++round) {
    for (int i = 0; i < threadsPerRound; ++i) {
      ASSERT_TRUE(StartDetachedThread([runs] { ++*runs; }));
    }
    while (*runs < round * threadsPerRound) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "after " << round << " rounds";
      std::this_thread::yield();
    }
  }
}

}  // namespace
}  // namespace swr::testing
