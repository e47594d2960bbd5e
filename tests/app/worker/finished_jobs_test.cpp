#include "app/worker/finished_jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace app {
namespace {

std::unique_ptr<FinishedJob> MakeResult(uint64_t rowId) {
  auto result = std::make_unique<FinishedJob>();
  result->rowId = rowId;
  return result;
}

// As the worker does.
void Post(FinishedJobQueue& queue, uint64_t rowId) {
  queue.AddFinished(MakeResult(rowId));
  queue.AnnounceFinished();
}

struct CountedQueue {
  bool canAnnounce = true;
  int announced = 0;
  int progressCalls = 0;
  FinishedJobQueue queue{{.finished =
                              [this] {
                                ++announced;
                                return canAnnounce;
                              },
                          .progress =
                              [this] {
                                ++progressCalls;
                                return true;
                              }}};

  void Post(uint64_t rowId) { app::Post(queue, rowId); }
  std::vector<uint64_t> Take() {
    std::vector<uint64_t> ids;
    for (const auto& result : queue.Take()) ids.push_back(result->rowId);
    return ids;
  }
};

using Ids = std::vector<uint64_t>;

TEST(FinishedJobQueueTest, AnnouncesOnceUntilTheWindowFindsTheQueueEmpty) {
  CountedQueue counted;
  counted.Post(1);
  counted.Post(2);
  EXPECT_EQ(counted.announced, 1);
  EXPECT_EQ(counted.Take(), (Ids{1, 2}));

  counted.Post(3);
  EXPECT_EQ(counted.announced, 1) << "the window is still polling";
  EXPECT_EQ(counted.Take(), Ids{3});
  EXPECT_EQ(counted.Take(), Ids{});

  counted.Post(4);
  EXPECT_EQ(counted.announced, 2);
  EXPECT_EQ(counted.Take(), Ids{4});
}

TEST(FinishedJobQueueTest, AFailedAnnouncementIsTriedAgainAndNothingIsLost) {
  CountedQueue counted;
  counted.canAnnounce = false;
  counted.Post(1);
  counted.canAnnounce = true;
  counted.Post(2);
  counted.Post(3);
  EXPECT_EQ(counted.announced, 2);
  EXPECT_EQ(counted.Take(), (Ids{1, 2, 3}));
}

TEST(FinishedJobQueueTest, JobsAlreadyTakenAreNotAnnounced) {
  CountedQueue counted;
  counted.queue.AddFinished(MakeResult(1));
  EXPECT_EQ(counted.Take(), Ids{1});
  counted.queue.AnnounceFinished();
  EXPECT_EQ(counted.announced, 0);
  counted.Post(2);
  EXPECT_EQ(counted.announced, 1) << "the next job is announced";
}

TEST(FinishedJobQueueTest, ProgressIsPassedOn) {
  CountedQueue counted;
  counted.queue.PostProgress();
  EXPECT_EQ(counted.progressCalls, 1);
}

TEST(FinishedJobQueueTest, EveryResultArrivesOnceAndInOrder) {
  constexpr uint64_t count = 20000;
  std::atomic<bool> announced = false;
  FinishedJobQueue queue({.finished =
                              [&] {
                                announced = true;
                                return true;
                              },
                          .progress = [] { return true; }});
  std::thread sender([&] {
    for (uint64_t i = 0; i < count; ++i) Post(queue, i);
  });
  uint64_t next = 0;
  while (next < count) {
    if (!announced.exchange(false)) continue;
    // As the window does: takes jobs until there are none.
    while (true) {
      const auto results = queue.Take();
      if (results.empty()) break;
      for (const auto& result : results) {
        EXPECT_EQ(result->rowId, next);
        ++next;
      }
    }
  }
  sender.join();
  EXPECT_EQ(next, count);
}

}  // namespace
}  // namespace app
