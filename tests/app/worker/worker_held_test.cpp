// The worker's progress figures, and closing the worker, while it is opening a file: a moment too
// short to hit by chance.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/worker/worker.h"
#include "tests/support/fault_plan.h"
#include "tests/support/gate.h"
#include "tests/support/job_paths.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::Gate;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;
using namespace std::chrono_literals;

constexpr swr::AlgoMask Md5 = swr::MaskOf(swr::AlgoId::Md5);

class Results final : public WorkerSink {
 public:
  void AddFinished(std::unique_ptr<FinishedJob> result) override {
    const std::lock_guard lock(mutex_);
    results_.push_back(std::move(result));
  }
  void AnnounceFinished() override {}
  void PostProgress() override {}
  bool HoldsFinished() const override {
    const std::lock_guard lock(mutex_);
    return !results_.empty();
  }
  std::vector<std::unique_ptr<FinishedJob>> Take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(results_, {});
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<FinishedJob>> results_;
};

// A worker that is held while it opens its nth file, counted from 1.
class HeldWorker {
 public:
  explicit HeldWorker(uint32_t heldFile)
      : faults_({{.call = SystemCall::OpenFile,
                  .nth = heldFile,
                  .code = std::nullopt,
                  .before = [this] { gate.Pass(); }}}),
        worker(std::make_unique<Worker>(results)) {}
  ~HeldWorker() { gate.Open(); }
  HeldWorker(const HeldWorker&) = delete;
  HeldWorker& operator=(const HeldWorker&) = delete;

  HashJob Job(uint64_t rowId, const std::u16string& name) {
    return {.rowId = rowId,
            .path = paths_.Keep(tree_.AddFile(name, "0123456789")),
            .mask = Md5,
            .size = 10};
  }

 private:
  TempTree tree_;
  testing::JobPaths paths_;

 public:
  Gate gate;
  Results results;

 private:
  InstalledFaults faults_;

 public:
  std::unique_ptr<Worker> worker;  // last, so destroyed first: its thread uses the others
};

TEST(HeldWorkerTest, TheBytesReadOfOneFileAreNotAddedToTheNext) {
  HeldWorker held(2);
  const HashJob second = held.Job(2, u"second");
  held.worker->EnqueueAll({held.Job(1, u"first"), second});
  held.gate.WaitForArrival();
  const WorkerSnapshot snapshot = held.worker->GetSnapshot();
  EXPECT_EQ(snapshot.currentPath, second.path->Text());
  EXPECT_EQ(snapshot.currentBytes, 0u) << "nothing of it has been read";
  EXPECT_EQ(snapshot.doneBytes, 10u) << "the first file alone";
  EXPECT_EQ(snapshot.totalBytes, 20u);
}

TEST(HeldWorkerTest, ClosingDropsWaitingJobs) {
  constexpr uint64_t count = 1000;
  HeldWorker held(1);
  const HashJob job = held.Job(0, u"file");
  std::vector<HashJob> jobs;
  for (uint64_t id = 1; id <= count; ++id) {
    jobs.push_back(job);
    jobs.back().rowId = id;
  }
  held.worker->EnqueueAll(std::move(jobs));
  held.gate.WaitForArrival();

  const Worker& ending = *held.worker;
  std::thread ender([&] { held.worker.reset(); });
  // It can't end before the held job does, but drops the others at once.
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (ending.GetSnapshot().remainingJobs > 1 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_EQ(ending.GetSnapshot().remainingJobs, 1u);
  held.gate.Open();
  ender.join();
  const auto results = held.results.Take();
  ASSERT_EQ(results.size(), 1u) << "of " << count << " jobs";
  EXPECT_EQ(results[0]->rowId, 1u);
  EXPECT_TRUE(results[0]->outcome.cancelled);
}

}  // namespace
}  // namespace app::testing
