// What the worker's thread does when a job has ended: it stores the result first, and announces it
// without holding a lock.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "app/worker/finished_jobs.h"
#include "app/worker/worker.h"
#include "tests/support/temp_tree.h"

namespace app {
namespace {

using swr::testing::TempTree;
using namespace std::chrono_literals;

constexpr swr::AlgoMask Md5 = swr::MaskOf(swr::AlgoId::Md5);

// The window can query the worker, and take results, during an announcement.
TEST(AnnouncingTest, HoldsNoLock) {
  TempTree tree;
  const SharedPath path = tree.AddFile(u"a", "abc");
  Worker* worker = nullptr;
  FinishedJobQueue* results = nullptr;
  std::atomic<bool> hasAnnounced = false;
  std::atomic<bool> hasAnswered = false;
  std::atomic<bool> answeredInTime = false;
  std::atomic<bool> sawResult = false;
  std::thread window;
  const auto waitFor = [](const std::atomic<bool>& flag, std::chrono::seconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!flag && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(1ms);
    }
    return flag.load();
  };
  const auto announce = [&] {
    window = std::thread([&] {
      const WorkerSnapshot snapshot = worker->GetSnapshot();
      sawResult = !snapshot.active && snapshot.hasFinishedJobs && results->Take().size() == 1;
      hasAnswered = true;
    });
    answeredInTime = waitFor(hasAnswered, 20s);
    hasAnnounced = true;
    return true;
  };
  FinishedJobQueue queue({.finished = announce, .progress = [] { return true; }});
  results = &queue;
  {
    Worker made(queue);
    worker = &made;
    made.Enqueue({.rowId = 1, .path = &path, .mask = Md5, .size = 3});
    EXPECT_TRUE(waitFor(hasAnnounced, 60s));
    if (window.joinable()) window.join();
  }
  EXPECT_TRUE(answeredInTime) << "a lock is held during the announcement";
  EXPECT_TRUE(sawResult);
}

// At any moment a snapshot includes either the running job or its result.
TEST(AnnouncingTest, NoSnapshotMissesBoth) {
  TempTree tree;
  const SharedPath path = tree.AddFile(u"a", "abc");
  FinishedJobQueue queue({.finished = [] { return false; }, .progress = [] { return true; }});
  Worker worker(queue);
  for (uint64_t round = 1; round <= 300; ++round) {
    worker.Enqueue({.rowId = round, .path = &path, .mask = Md5, .size = 3});
    WorkerSnapshot snapshot = worker.GetSnapshot();
    while (snapshot.active) snapshot = worker.GetSnapshot();
    ASSERT_TRUE(snapshot.hasFinishedJobs) << round;
    ASSERT_EQ(queue.Take().size(), 1u);
  }
}

}  // namespace
}  // namespace app
