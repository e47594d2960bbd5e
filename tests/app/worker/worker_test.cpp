#include "app/worker/worker.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "swr/hash/digest_text.h"
#include "swr/system/error_codes.h"
#include "tests/support/job_paths.h"
#include "tests/support/temp_tree.h"

namespace app {
namespace {

using std::chrono::steady_clock;
using swr::testing::TempTree;
using namespace std::chrono_literals;

constexpr swr::AlgoMask Md5 = swr::MaskOf(swr::AlgoId::Md5);

// Collects what the worker reports. Can hold the worker inside its progress call, so that a test
// decides what happens while a file is being read.
class Sink final : public WorkerSink {
 public:
  void AddFinished(std::unique_ptr<FinishedJob> result) override {
    const std::lock_guard lock(mutex_);
    results_.push_back(std::move(result));
    changed_.notify_all();
  }
  void AnnounceFinished() override {}
  void PostProgress() override {
    std::unique_lock lock(mutex_);
    ++progressCount_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return !holds_; });
  }

  bool HoldsFinished() const override {
    const std::lock_guard lock(mutex_);
    return !results_.empty();
  }

  void Hold() {
    const std::lock_guard lock(mutex_);
    holds_ = true;
  }
  void Release() {
    const std::lock_guard lock(mutex_);
    holds_ = false;
    changed_.notify_all();
  }
  void WaitForProgress(int count = 1) {
    std::unique_lock lock(mutex_);
    ASSERT_TRUE(changed_.wait_for(lock, 60s, [&] { return progressCount_ >= count; }));
  }
  // All results so far, once there are `count`.
  std::vector<std::unique_ptr<FinishedJob>> Wait(size_t count) {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, 60s, [&] { return results_.size() >= count; }));
    return std::move(results_);
  }
  int progressCount() {
    const std::lock_guard lock(mutex_);
    return progressCount_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::unique_ptr<FinishedJob>> results_;
  int progressCount_ = 0;
  bool holds_ = false;
};

class WorkerTest : public ::testing::Test {
 protected:
  HashJob Job(uint64_t rowId, const std::u16string& name, uint64_t size = 10) {
    return {.rowId = rowId,
            .path = paths.Keep(tree.AddFile(name, "0123456789")),
            .mask = Md5,
            .size = size};
  }
  // Queues a job and holds the worker in the middle of it.
  void StartHeld(HashJob job) {
    const int before = sink.progressCount();
    worker.AcknowledgeProgress();
    sink.Hold();
    worker.Enqueue(std::move(job));
    sink.WaitForProgress(before + 1);
  }
  // Returns once the worker has finished everything.
  void WaitUntilIdle() {
    while (worker.GetSnapshot().active) std::this_thread::sleep_for(1ms);
  }

  TempTree tree;
  testing::JobPaths paths;
  Sink sink;
  std::atomic<uint64_t> now = 1000;
  Worker worker{sink, [this] { return now.load(); }};
};

TEST_F(WorkerTest, ReportsTheDigestsOfEachJobInOrder) {
  worker.Enqueue(Job(1, u"a"));
  worker.Enqueue({.rowId = 2, .path = paths.Keep(tree.Path(u"gone")), .mask = Md5});
  worker.Enqueue(Job(3, u"c"));
  const auto results = sink.Wait(3);
  ASSERT_EQ(results.size(), 3u);
  EXPECT_EQ(results[0]->rowId, 1u);
  EXPECT_EQ(results[0]->mask, Md5);
  // MD5 of the ten digits, as md5sum prints it.
  EXPECT_EQ(swr::DigestToHex(results[0]->outcome.digests[swr::IndexOf(swr::AlgoId::Md5)], false),
            "781e5e245d69b566979b86e28d23f2c7");
  EXPECT_EQ(results[1]->rowId, 2u);
  EXPECT_EQ(results[1]->outcome.error, swr::ErrorFileNotFound);
  EXPECT_EQ(results[2]->rowId, 3u) << "a failed job does not stop the queue";
  EXPECT_EQ(results[2]->outcome.error, 0u);
}

TEST_F(WorkerTest, IdleFigures) {
  const WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_FALSE(snapshot.active);
  EXPECT_EQ(snapshot.currentPath, u"");
  EXPECT_EQ(snapshot.currentBytes, 0u);
  EXPECT_EQ(snapshot.doneBytes, 0u);
  EXPECT_EQ(snapshot.totalBytes, 0u);
  EXPECT_EQ(snapshot.remainingJobs, 0u);
  EXPECT_EQ(snapshot.bytesPerSecond, 0.0);
}

TEST_F(WorkerTest, FiguresDuringAJob) {
  const HashJob job = Job(1, u"a", 100);
  StartHeld(job);
  worker.Enqueue(Job(2, u"b", 30));
  WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_TRUE(snapshot.active);
  EXPECT_EQ(snapshot.currentPath, job.path->Text());
  EXPECT_EQ(snapshot.currentBytes, 10u);
  EXPECT_EQ(snapshot.currentSize, 100u);
  EXPECT_EQ(snapshot.doneBytes, 10u);
  EXPECT_EQ(snapshot.totalBytes, 130u);
  EXPECT_EQ(snapshot.remainingJobs, 2u);
  sink.Release();
  sink.Wait(2);
  WaitUntilIdle();
  snapshot = worker.GetSnapshot();
  EXPECT_FALSE(snapshot.active);
  EXPECT_EQ(snapshot.currentPath, u"");
  EXPECT_EQ(snapshot.currentBytes, 0u);
  EXPECT_EQ(snapshot.doneBytes, 130u) << "the sizes of the jobs, not the bytes read";
  EXPECT_EQ(snapshot.remainingJobs, 0u);
}

// At any moment a job is running, waiting, or finished but not taken.
TEST_F(WorkerTest, ReportsWaitingResults) {
  EXPECT_FALSE(worker.GetSnapshot().hasFinishedJobs);
  const HashJob job = Job(1, u"a");
  for (int round = 0; round < 200; ++round) {
    worker.Enqueue(job);
    WorkerSnapshot snapshot = worker.GetSnapshot();
    while (snapshot.active) snapshot = worker.GetSnapshot();
    ASSERT_TRUE(snapshot.hasFinishedJobs);
    ASSERT_EQ(sink.Wait(1).size(), 1u);
    ASSERT_FALSE(worker.GetSnapshot().hasFinishedJobs);
  }
}

TEST_F(WorkerTest, TheSpeedIsTheAverageOfTheBatchAfterHalfASecond) {
  StartHeld(Job(1, u"a"));
  now = 1500;
  EXPECT_EQ(worker.GetSnapshot().bytesPerSecond, 0.0);
  now = 1501;
  EXPECT_DOUBLE_EQ(worker.GetSnapshot().bytesPerSecond, 10 * 1000.0 / 501);
  now = 3000;
  EXPECT_DOUBLE_EQ(worker.GetSnapshot().bytesPerSecond, 5.0);
  sink.Release();
}

TEST_F(WorkerTest, AJobAddedDuringTheLastOneBelongsToItsBatch) {
  StartHeld(Job(1, u"a"));
  now = 2000;
  worker.Enqueue(Job(2, u"b"));
  now = 2001;
  const WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_EQ(snapshot.totalBytes, 20u);
  EXPECT_GT(snapshot.bytesPerSecond, 0.0) << "the batch began at 1000";
  sink.Release();
}

TEST_F(WorkerTest, AJobAfterTheQueueRanEmptyStartsANewBatch) {
  worker.Enqueue(Job(1, u"a"));
  sink.Wait(1);
  WaitUntilIdle();
  now = 5000;
  StartHeld(Job(2, u"b", 7));
  const WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_EQ(snapshot.totalBytes, 10u) << "not 7, because 10 bytes have been read";
  EXPECT_EQ(snapshot.doneBytes, 10u);
  EXPECT_EQ(snapshot.bytesPerSecond, 0.0);
  sink.Release();
}

TEST_F(WorkerTest, AFileThatGrewRaisesTheTotal) {
  StartHeld(Job(1, u"a", 4));
  const WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_EQ(snapshot.currentSize, 4u);
  EXPECT_EQ(snapshot.doneBytes, 10u);
  EXPECT_EQ(snapshot.totalBytes, 10u);
  sink.Release();
}

TEST_F(WorkerTest, RemoveDropsAllQueuedJobsOfTheRow) {
  StartHeld(Job(1, u"a", 100));
  worker.Enqueue(Job(2, u"b", 20));
  worker.Enqueue(Job(3, u"c", 3));
  worker.Enqueue(Job(2, u"b", 20));
  EXPECT_EQ(worker.GetSnapshot().totalBytes, 143u);
  worker.Remove(std::array{uint64_t{2}});
  EXPECT_EQ(worker.GetSnapshot().totalBytes, 103u);
  EXPECT_EQ(worker.GetSnapshot().remainingJobs, 2u);
  sink.Release();
  const auto results = sink.Wait(2);
  EXPECT_FALSE(results[0]->outcome.cancelled);
  EXPECT_EQ(results[1]->rowId, 3u);
}

TEST_F(WorkerTest, RemovingTheRunningRowCancelsItAndItsResultStillArrives) {
  StartHeld(Job(1, u"a", 100));
  worker.Remove(std::array{uint64_t{1}});
  sink.Release();
  const auto results = sink.Wait(1);
  ASSERT_EQ(results.size(), 1u);
  EXPECT_EQ(results[0]->rowId, 1u);
  EXPECT_TRUE(results[0]->outcome.cancelled);
  EXPECT_FALSE(results[0]->outcome.digests[swr::IndexOf(swr::AlgoId::Md5)].present);
  WaitUntilIdle();
  EXPECT_EQ(worker.GetSnapshot().doneBytes, 100u);
}

TEST_F(WorkerTest, ACancelIsNotCarriedOverToTheNextJob) {
  StartHeld(Job(1, u"a"));
  worker.Remove(std::array{uint64_t{1}});
  worker.Enqueue(Job(2, u"b"));
  sink.Release();
  const auto results = sink.Wait(2);
  EXPECT_TRUE(results[0]->outcome.cancelled);
  EXPECT_FALSE(results[1]->outcome.cancelled);
}

TEST_F(WorkerTest, CancelAllEmptiesTheQueueAndCancelsTheRunningJob) {
  StartHeld(Job(1, u"a", 100));
  worker.Enqueue(Job(2, u"b", 20));
  worker.CancelAll();
  WorkerSnapshot snapshot = worker.GetSnapshot();
  EXPECT_EQ(snapshot.remainingJobs, 1u);
  EXPECT_EQ(snapshot.totalBytes, 120u) << "dropped jobs stay in the total";
  EXPECT_TRUE(snapshot.active);
  sink.Release();
  const auto results = sink.Wait(1);
  EXPECT_TRUE(results[0]->outcome.cancelled);
  WaitUntilIdle();
  EXPECT_EQ(worker.GetSnapshot().remainingJobs, 0u);
}

TEST_F(WorkerTest, CancelAllOfAnIdleWorkerHasNoEffect) {
  worker.CancelAll();
  worker.Enqueue(Job(1, u"a"));
  const auto results = sink.Wait(1);
  EXPECT_FALSE(results[0]->outcome.cancelled);
}

TEST_F(WorkerTest, AtMostOneProgressMessageIsPending) {
  for (uint64_t i = 1; i <= 3; ++i) worker.Enqueue(Job(i, u"a"));
  sink.Wait(3);
  EXPECT_EQ(sink.progressCount(), 1);
  worker.AcknowledgeProgress();
  worker.Enqueue(Job(4, u"a"));
  sink.Wait(1);
  EXPECT_EQ(sink.progressCount(), 2);
}

TEST(WorkerEndTest, ClosingDuringAJobDropsTheQueueAndWaits) {
  TempTree tree;
  const SharedPath path = tree.AddFile(u"a", "0123456789");
  Sink sink;
  sink.Hold();
  auto worker = std::make_unique<Worker>(sink);
  for (uint64_t i = 1; i <= 3; ++i) worker->Enqueue({.rowId = i, .path = &path, .mask = Md5});
  sink.WaitForProgress();
  const Worker& closing = *worker;
  std::atomic<bool> hasClosed = false;
  std::thread closer([&] {
    worker.reset();
    hasClosed = true;
  });
  const auto deadline = steady_clock::now() + 10s;
  while (closing.GetSnapshot().remainingJobs > 1 && steady_clock::now() < deadline) {
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_EQ(closing.GetSnapshot().remainingJobs, 1u);
  EXPECT_FALSE(hasClosed) << "it waits for the running job";
  sink.Release();
  closer.join();
  const auto results = sink.Wait(0);
  ASSERT_EQ(results.size(), 1u);
  EXPECT_EQ(results[0]->rowId, 1u);
  EXPECT_TRUE(results[0]->outcome.cancelled);
}

// Both before and after it has freed what it keeps for the next file.
TEST(WorkerEndTest, ClosingAnIdleWorkerEndsAtOnce) {
  for (const auto rest : {std::chrono::milliseconds(1min), 0ms}) {
    Sink sink;
    auto worker = std::make_unique<Worker>(
        sink, [] { return uint64_t{0}; }, rest);
    // Most probably its thread is waiting for work by then.
    std::this_thread::sleep_for(50ms);
    const auto start = steady_clock::now();
    worker.reset();
    EXPECT_LT(steady_clock::now() - start, 10s);
  }
}

}  // namespace
}  // namespace app
