#include "cli/schedule/ordered_work.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <numeric>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"

namespace cli::testing {
namespace {

// Records what the jobs of a test do.
struct Trace {
  std::vector<uint32_t> reported;  // only one job reports at a time
  std::atomic<uint32_t> ran = 0;
  std::atomic<uint32_t> alive = 0;
  std::atomic<bool> isReporting = false;
};

class NumberedJob final : public Job {
 public:
  NumberedJob(Trace& trace, uint32_t number, uint32_t microseconds = 0)
      : trace_(trace), number_(number), microseconds_(microseconds) {
    ++trace_.alive;
  }
  ~NumberedJob() override { --trace_.alive; }

  void Run(WorkTools& /*tools*/) override {
    if (microseconds_ > 0) std::this_thread::sleep_for(std::chrono::microseconds(microseconds_));
    hasRun_ = true;
    ++trace_.ran;
  }
  void Report() override {
    EXPECT_FALSE(trace_.isReporting.exchange(true));
    EXPECT_TRUE(hasRun_);
    trace_.reported.push_back(number_);
    trace_.isReporting = false;
  }

 private:
  Trace& trace_;
  uint32_t number_;
  uint32_t microseconds_;
  bool hasRun_ = false;
};

std::vector<uint32_t> FirstNumbers(size_t count) {
  std::vector<uint32_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0u);
  return numbers;
}

const auto noTick = [] {};

TEST(OrderedWorkTest, ReportsInTheOrderOfSubmission) {
  for (const uint32_t threads : {1u, 2u, 8u}) {
    for (const size_t capacity : {size_t{1}, size_t{3}, OrderedWork::DefaultCapacity}) {
      SCOPED_TRACE(std::to_string(threads) + " threads, capacity " + std::to_string(capacity));
      std::mt19937 random(threads);
      Trace trace;
      OrderedWork work(threads, capacity);
      work.Run(
          [&](const OrderedWork::Submit& submit) {
            for (uint32_t i = 0; i < 300; ++i) {
              EXPECT_TRUE(submit(
                  std::make_unique<NumberedJob>(trace, i, static_cast<uint32_t>(random() % 50))));
            }
          },
          noTick);
      EXPECT_EQ(trace.reported, FirstNumbers(300));
      EXPECT_EQ(trace.alive, 0u);
    }
  }
}

TEST(OrderedWorkTest, RunsLaterJobsWhileOneIsSlow) {
  Trace trace;
  OrderedWork work(2);
  class SlowJob final : public Job {
   public:
    explicit SlowJob(Trace& trace) : trace_(trace) {}
    void Run(WorkTools& /*tools*/) override {
      while (trace_.ran < 100) std::this_thread::yield();
    }
    void Report() override { EXPECT_TRUE(trace_.reported.empty()); }

   private:
    Trace& trace_;
  };
  work.Run(
      [&](const OrderedWork::Submit& submit) {
        submit(std::make_unique<SlowJob>(trace));
        for (uint32_t i = 0; i < 100; ++i) submit(std::make_unique<NumberedJob>(trace, i));
      },
      noTick);
  EXPECT_EQ(trace.reported, FirstNumbers(100));
}

TEST(OrderedWorkTest, TheProducerWaitsWhenTheQueueIsFull) {
  Trace trace;
  OrderedWork work(1, 4);
  uint32_t most = 0;
  work.Run(
      [&](const OrderedWork::Submit& submit) {
        for (uint32_t i = 0; i < 100; ++i) {
          submit(std::make_unique<NumberedJob>(trace, i, 20));
          most = std::max(most, trace.alive.load());
        }
      },
      noTick);
  // Jobs that are being reported have left the queue; there are at most `capacity` of them.
  EXPECT_LE(most, 8u);
}

TEST(OrderedWorkTest, EndsAtOnceWithoutJobs) {
  OrderedWork work(4);
  work.Run([](const OrderedWork::Submit&) {}, noTick);
}

TEST(OrderedWorkTest, RethrowsAnExceptionAndEndsTheWork) {
  class ThrowingJob final : public Job {
   public:
    void Run(WorkTools& /*tools*/) override { throw std::runtime_error("job"); }
    void Report() override { ADD_FAILURE(); }
  };
  Trace trace;
  OrderedWork work(2, 2);
  try {
    work.Run(
        [&](const OrderedWork::Submit& submit) {
          submit(std::make_unique<ThrowingJob>());
          for (uint32_t i = 0; submit(std::make_unique<NumberedJob>(trace, i)); ++i) {
          }
        },
        noTick);
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "job");
  }
  EXPECT_EQ(trace.alive, 0u);
  OrderedWork other(2);
  EXPECT_THROW(other.Run([](const OrderedWork::Submit&) { throw std::bad_alloc(); }, noTick),
               std::bad_alloc);
}

// Cancelled from another thread at a random moment: the reported jobs are a prefix of the submitted
// ones, and no job leaks.
TEST(OrderedWorkTest, ACancelLeavesAPrefixOfTheJobsReported) {
  std::mt19937 random(20261121);
  const uint64_t rounds = swr::testing::NumberFromEnvironment("SUMWRIGHT_WORK_ROUNDS", 100);
  for (uint64_t round = 0; round < rounds; ++round) {
    Trace trace;
    OrderedWork work(1 + static_cast<uint32_t>(random() % 6), 1 + random() % 40);
    const auto delay = static_cast<uint32_t>(random() % 3000);
    std::thread canceller([&] {
      std::this_thread::sleep_for(std::chrono::microseconds(delay));
      work.Cancel();
    });
    work.Run(
        [&](const OrderedWork::Submit& submit) {
          for (uint32_t i = 0; i < 400; ++i) {
            if (!submit(std::make_unique<NumberedJob>(trace, i, i % 7 == 0 ? 30 : 0))) return;
          }
        },
        noTick);
    canceller.join();
    ASSERT_EQ(trace.reported, FirstNumbers(trace.reported.size()));
    ASSERT_EQ(trace.alive, 0u);
  }
}

// Jobs with real hashers, on files long enough for helper threads, under random cancels.
TEST(OrderedWorkTest, HashesFilesUnderRandomCancels) {
  class FileJob final : public Job {
   public:
    FileJob(const std::u16string& path, std::atomic<uint32_t>& complete)
        : path_(path), complete_(complete) {}
    void Run(WorkTools& tools) override {
      outcome_ = tools.hasher.HashFile(path_, swr::DefaultAlgoMask, {.cancel = &tools.cancel});
    }
    void Report() override {
      if (outcome_.cancelled) return;
      EXPECT_EQ(outcome_.error, 0u);
      EXPECT_EQ(outcome_.digests.PresentMask(), swr::DefaultAlgoMask);
      ++complete_;
    }

   private:
    const std::u16string& path_;
    std::atomic<uint32_t>& complete_;
    swr::HashOutcome outcome_;
  };
  swr::testing::TempTree tree;
  const std::u16string paths[] = {tree.AddFile(u"small", "abc"),
                                  tree.AddFile(u"large", swr::testing::CountingBytes(3 << 20))};
  std::mt19937 random(20261122);
  const uint64_t rounds = swr::testing::NumberFromEnvironment("SUMWRIGHT_WORK_ROUNDS", 100) / 5;
  for (uint64_t round = 0; round < rounds; ++round) {
    std::atomic<uint32_t> complete = 0;
    OrderedWork work(1 + static_cast<uint32_t>(random() % 4));
    const bool isCancelled = round % 4 != 0;
    const auto delay = static_cast<uint32_t>(random() % 20000);
    std::thread canceller([&] {
      if (!isCancelled) return;
      std::this_thread::sleep_for(std::chrono::microseconds(delay));
      work.Cancel();
    });
    work.Run(
        [&](const OrderedWork::Submit& submit) {
          for (int i = 0; i < 12; ++i) {
            if (!submit(std::make_unique<FileJob>(paths[i % 2], complete))) return;
          }
        },
        noTick);
    canceller.join();
    if (!isCancelled) {
      ASSERT_EQ(complete, 12u);
    }
  }
}

}  // namespace
}  // namespace cli::testing
