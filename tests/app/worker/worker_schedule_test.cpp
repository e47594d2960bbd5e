// Random schedules of everything that the window's thread does with the worker, including ending
// it, while files are hashed. Mainly for ThreadSanitizer.
//
// SUMWRIGHT_SCHEDULES sets how many schedules each test runs, SUMWRIGHT_SEED the number of the
// first. A schedule depends on its number alone, which a failure reports.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "app/worker/worker.h"
#include "swr/hash/digest_text.h"
#include "swr/hash/hasher.h"
#include "swr/text/encoding.h"
#include "tests/support/job_paths.h"
#include "tests/support/own_resources.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;
using swr::testing::CountingBytes;
using swr::testing::TempTree;

constexpr uint64_t UsualSchedules = 250;
constexpr uint64_t UsualSeed = 20260115;
constexpr swr::AlgoMask ScheduledAlgos =
    MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Sha256) | MaskOf(AlgoId::Blake3);

class Chance {
 public:
  explicit Chance(uint64_t seed) : engine_(seed) {}
  template <typename Number>
  std::make_unsigned_t<Number> Below(Number bound) {
    return static_cast<std::make_unsigned_t<Number>>(engine_() % static_cast<uint64_t>(bound));
  }
  bool OneIn(uint64_t count) { return Below(count) == 0; }
  // Lets the other threads run: not at all, briefly, or for a longer time.
  void Pause() {
    const uint64_t kind = Below(4u);
    if (kind == 0) std::this_thread::yield();
    if (kind == 1) std::this_thread::sleep_for(std::chrono::microseconds(Below(300u)));
  }

 private:
  std::mt19937_64 engine_;
};

// Runs the schedules, none of which may leave a thread or an open file.
void RunSchedules(const std::function<void(Chance&)>& schedule) {
  const uint64_t count = swr::testing::NumberFromEnvironment("SUMWRIGHT_SCHEDULES", UsualSchedules);
  const uint64_t seed = swr::testing::NumberFromEnvironment("SUMWRIGHT_SEED", UsualSeed);
  swr::testing::OwnResources before;
  for (uint64_t i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
    SCOPED_TRACE("schedule of seed " + std::to_string(seed + i));
    Chance chance(seed + i);
    schedule(chance);
    constexpr uint64_t warmUp = 5;
    if (i == std::min(warmUp, count - 1)) before = swr::testing::CountOwnResources();
  }
  EXPECT_EQ(swr::testing::WaitForResources(before), before);
  ::testing::Test::RecordProperty("schedules", static_cast<int>(count));
}

// One is longer than a chunk of the worker, and so is hashed by several threads.
struct ScheduledFiles {
  struct File {
    std::u16string path;
    std::array<swr::Digest, swr::AlgoCount> digests;  // those of ScheduledAlgos
  };

  ScheduledFiles() {
    for (const std::string& content :
         {std::string(), std::string("0123456789"), CountingBytes(5000), CountingBytes(70'000),
          CountingBytes((1 << 20) + 1000)}) {
      File& file = files.emplace_back();
      file.path = tree.AddFile(u"file" + std::u16string(1, Letter(files.size())), content);
      for (const AlgoId id : swr::IdsFromMask(ScheduledAlgos)) {
        file.digests[swr::IndexOf(id)] =
            swr::HashBytes(id, {reinterpret_cast<const uint8_t*>(content.data()), content.size()});
      }
      list += swr::DigestToHex(file.digests[swr::IndexOf(AlgoId::Sha256)], false) + "  file" +
              static_cast<char>(Letter(files.size())) + "\n";
    }
    listPath = tree.AddFile(u"list.sha256", list);
  }
  static char16_t Letter(size_t number) { return static_cast<char16_t>(u'a' + number); }

  const File* Find(const std::u16string& path) const {
    const auto found = std::ranges::find(files, path, &File::path);
    return found == files.end() ? nullptr : &*found;
  }

  TempTree tree;
  std::vector<File> files;
  std::string list;
  std::u16string listPath;
  std::u16string absent = tree.Path(u"absent");
};

bool IsRight(const swr::DigestSlot& slot, const swr::Digest& known) {
  return slot.length == known.length && slot.bytes == known.bytes;
}

// ---- The worker alone.

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
    return std::move(results_);
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<FinishedJob>> results_;
};

// Nothing is lost or reported twice, and everything is reported in the order of the queue.
TEST(WorkerScheduleTest, WorkerAlone) {
  const ScheduledFiles files;
  RunSchedules([&](Chance& chance) {
    Results results;
    uint64_t nextId = 1;
    std::vector<size_t> fileOf = {0};
    bool dropsJobs = false;
    const bool closesAtOnce = chance.OneIn(2);
    testing::JobPaths paths;
    {
      // Some workers free at once what they keep for the next file.
      const auto restTime = static_cast<int64_t>(chance.OneIn(2) ? chance.Below(2u) : 60'000u);
      const std::chrono::milliseconds rest(restTime);
      Worker worker(
          results, [] { return uint64_t{0}; }, rest);
      const uint64_t steps = 5 + chance.Below(20u);
      for (uint64_t step = 0; step < steps; ++step) {
        chance.Pause();
        switch (chance.Below(8u)) {
          case 0:
            worker.Remove(std::array{1 + chance.Below(nextId), 1 + chance.Below(nextId)});
            dropsJobs = true;
            break;
          case 1:
            if (!chance.OneIn(3)) break;
            worker.CancelAll();
            dropsJobs = true;
            break;
          case 2: {
            const WorkerSnapshot snapshot = worker.GetSnapshot();
            EXPECT_GE(snapshot.totalBytes, snapshot.doneBytes);
            EXPECT_EQ(snapshot.active, snapshot.remainingJobs > 0);
            worker.AcknowledgeProgress();
            break;
          }
          default: {
            // The long file is the last one; a few are enough.
            const size_t file = chance.OneIn(8) ? 4u : chance.Below(4u);
            fileOf.push_back(file);
            worker.Enqueue({.rowId = nextId++,
                            .path = paths.Keep(files.files[file].path),
                            .mask = ScheduledAlgos,
                            .size = 10});
          }
        }
      }
      while (!closesAtOnce && worker.GetSnapshot().active) std::this_thread::yield();
    }
    std::vector<uint64_t> seen;
    for (const auto& result : results.Take()) {
      seen.push_back(result->rowId);
      EXPECT_EQ(result->outcome.error, 0u);
      EXPECT_FALSE(result->outcome.changed);
      for (const AlgoId id : swr::IdsFromMask(ScheduledAlgos)) {
        const swr::DigestSlot& slot = result->outcome.digests[swr::IndexOf(id)];
        EXPECT_EQ(slot.present, !result->outcome.cancelled);
        const auto& file = files.files[fileOf.at(static_cast<size_t>(result->rowId))];
        EXPECT_TRUE(!slot.present || IsRight(slot, file.digests[swr::IndexOf(id)]));
      }
    }
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());
    EXPECT_TRUE(closesAtOnce || dropsJobs || seen.size() == nextId - 1) << seen.size();
  });
}

// ---- The whole window.

void CheckRows(const WorkingWindow& window, const ScheduledFiles& files, bool wasCancelled) {
  for (const Row& row : window.rows) {
    SCOPED_TRACE(swr::WideToUtf8(row.Path()));
    EXPECT_EQ(row.pendingMask, 0u);
    const auto* file = files.Find(row.Path());
    if (file == nullptr) {
      EXPECT_EQ(row.status, RowStatus::Failed);
      continue;
    }
    EXPECT_TRUE(row.status == RowStatus::Done ||
                (wasCancelled && row.status == RowStatus::Cancelled))
        << static_cast<int>(row.status);
    EXPECT_FALSE(row.changed);
    for (const swr::AlgoInfo& info : swr::AllAlgos()) {
      const swr::DigestSlot& slot = row.digests[swr::IndexOf(info.id)];
      EXPECT_TRUE(!slot.present || IsRight(slot, file->digests[swr::IndexOf(info.id)]));
      const bool isWanted = (window.options.algorithms & MaskOf(info.id)) != 0;
      // A job that had finished when its row was cancelled makes the row done, with its digests.
      EXPECT_TRUE(slot.present || !isWanted || wasCancelled);
    }
  }
}

TEST(WorkerScheduleTest, WholeWindow) {
  const ScheduledFiles files;
  RunSchedules([&](Chance& chance) {
    WorkingWindow window;
    window.algorithms.Select(MaskOf(AlgoId::Md5));
    bool wasCancelled = false;
    const uint64_t steps = 5 + chance.Below(20u);
    for (uint64_t step = 0; step < steps; ++step) {
      chance.Pause();
      switch (chance.Below(12u)) {
        case 0:
          window.edits.CancelAll();
          wasCancelled = true;
          break;
        case 1:
          if (!window.rows.IsEmpty()) {
            window.RemoveRows({chance.Below(window.rows.Size())});
          }
          break;
        case 2:
          if (chance.OneIn(3)) window.edits.Clear();
          break;
        case 3:
        case 4: {
          const swr::AlgoMask mask = static_cast<swr::AlgoMask>(chance.Below(1 << 15));
          window.algorithms.Select((mask & ScheduledAlgos) | MaskOf(AlgoId::Crc32));
          break;
        }
        case 5:
          if (chance.OneIn(3)) window.verification.VerifyFile(files.listPath);
          break;
        case 6:
          window.TakeResults();
          break;
        case 7:
          window.Tick();
          window.AcknowledgeProgress();
          break;
        default: {
          std::vector<std::u16string> paths;
          for (uint64_t i = chance.Below(3u); i < 3; ++i) {
            paths.push_back(files.files[chance.OneIn(8) ? 4u : chance.Below(4u)].path);
          }
          if (chance.OneIn(10)) paths.push_back(files.absent);
          window.adding.AddPaths(paths);
        }
      }
    }
    // Half of them end while there is still work.
    if (chance.OneIn(2)) return;
    ASSERT_TRUE(window.WaitUntilIdle());
    CheckRows(window, files, wasCancelled);
  });
}

}  // namespace
}  // namespace app::testing
