// The worker frees the memory and threads that it keeps between files. The figures come from the
// system, so sanitizer builds leave this test out.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "app/worker/worker.h"
#include "tests/support/own_resources.h"
#include "tests/support/temp_tree.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using swr::testing::CountOwnResources;
using swr::testing::OwnResources;

constexpr long KiB = 1024;
constexpr auto Rest = 300ms;

class LastFinishedJob final : public WorkerSink {
 public:
  void AddFinished(std::unique_ptr<FinishedJob> job) override {
    const std::lock_guard lock(mutex_);
    job_ = std::move(job);
  }
  void AnnounceFinished() override {}
  void PostProgress() override {}
  bool HoldsFinished() const override { return false; }
  bool IsThere() const {
    const std::lock_guard lock(mutex_);
    return job_ != nullptr;
  }

 private:
  mutable std::mutex mutex_;
  std::unique_ptr<FinishedJob> job_;
};

// Resident memory of this process without mapped files, in bytes.
long OwnMemory() {
  std::ifstream file("/proc/self/statm");
  long size = 0;
  long resident = 0;
  long shared = 0;
  file >> size >> resident >> shared;
  return (resident - shared) * sysconf(_SC_PAGESIZE);
}

TEST(WorkerMemoryTest, IsFreedWhenTheWorkerIsIdle) {
  swr::testing::TempTree tree;
  const SharedPath path =
      tree.AddFile(u"large", swr::testing::CountingBytes(20 * swr::DefaultChunkSize));
  const OwnResources before = CountOwnResources();
  LastFinishedJob sink;
  Worker worker(
      sink, [] { return uint64_t{0}; }, Rest);
  const long idle = OwnMemory();
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    worker.Enqueue({.rowId = 1, .path = &path, .mask = swr::DefaultAlgoMask, .size = 10});
    long most = 0;
    while (worker.GetSnapshot().active || !sink.IsThere()) most = std::max(most, OwnMemory());
    EXPECT_GT(CountOwnResources().threads, before.threads + 1) << "threads are kept";
    EXPECT_GT(OwnMemory(), idle + 2 * swr::DefaultChunkSize) << "buffers are kept";
    EXPECT_LT(most, idle + 12 * KiB * KiB);

    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while ((CountOwnResources().threads > before.threads + 1 || OwnMemory() > idle + 512 * KiB) &&
           std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(5ms);
    }
    EXPECT_EQ(CountOwnResources().threads, before.threads + 1) << "the worker's own";
    EXPECT_LE(OwnMemory(), idle + 512 * KiB);
  }
}

}  // namespace
}  // namespace app
