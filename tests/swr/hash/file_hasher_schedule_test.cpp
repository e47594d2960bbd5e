// Random schedules of FileHashers that share their threads: files of every kind, cancels, failing
// reads, released memory and destroyed hashers, all at the same time. Meant for ThreadSanitizer.
//
// SUMWRIGHT_SCHEDULES sets how many schedules are run, SUMWRIGHT_SEED the seed of the first one. A
// failure names the seed of its schedule.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "swr/hash/file_hasher.h"
#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "tests/support/own_resources.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

constexpr uint64_t DefaultSchedules = 150;
constexpr uint64_t DefaultSeed = 20261122;
constexpr uint32_t ReadError = 23;
constexpr AlgoMask AllButMd2 = AllAlgosMask & ~MaskOf(AlgoId::Md2);

class Chance {
 public:
  explicit Chance(uint64_t seed) : engine_(seed) {}
  uint64_t Below(uint64_t bound) { return engine_() % bound; }
  size_t IndexIn(size_t count) { return static_cast<size_t>(Below(count)); }
  bool OneIn(uint64_t count) { return Below(count) == 0; }
  void Pause() {
    const uint64_t kind = Below(4);
    if (kind == 0) std::this_thread::yield();
    if (kind == 1) std::this_thread::sleep_for(std::chrono::microseconds(Below(200)));
  }

 private:
  std::mt19937_64 engine_;
};

// Makes about one in `oneIn` reads and new digests fail, or none if it is 0.
class SparseFaults final : public FaultPlan {
 public:
  explicit SparseFaults(uint64_t oneIn, uint64_t seed) : oneIn_(oneIn), state_(seed) {
    installedFaultPlan.store(this, std::memory_order_release);
  }
  ~SparseFaults() override { installedFaultPlan.store(nullptr, std::memory_order_release); }
  SparseFaults(const SparseFaults&) = delete;
  SparseFaults& operator=(const SparseFaults&) = delete;

  std::optional<uint32_t> Fault(SystemCall call) override {
    if (oneIn_ == 0) return std::nullopt;
    if (call != SystemCall::ReadFile && call != SystemCall::CreateDigest &&
        call != SystemCall::CreateReusableDigest) {
      return std::nullopt;
    }
    std::minstd_rand random(static_cast<uint32_t>(state_.fetch_add(0x9E3779B9)));
    random.discard(2);
    return random() % oneIn_ == 0 ? std::optional(ReadError) : std::nullopt;
  }

 private:
  const uint64_t oneIn_;
  std::atomic<uint64_t> state_;
};

struct ScheduledFile {
  std::u16string path;
  uint64_t size;
  AlgoMask mask;
  uint32_t chunkSize;
  std::vector<Digest> digests;  // of the mask
};

std::vector<ScheduledFile> MakeFiles(TempTree& tree) {
  std::vector<ScheduledFile> files;
  const auto add = [&](size_t size, AlgoMask mask, uint32_t chunkSize) {
    const std::u16string name =
        u"file" + std::u16string(1, static_cast<char16_t>('a' + files.size()));
    const std::string content = CountingBytes(size);
    ScheduledFile& file = files.emplace_back();
    file = {
        .path = tree.AddFile(name, content), .size = size, .mask = mask, .chunkSize = chunkSize};
    const std::span bytes(reinterpret_cast<const uint8_t*>(content.data()), size);
    for (const AlgoId id : IdsFromMask(mask)) file.digests.push_back(HashBytes(id, bytes));
  };
  add(0, AllButMd2, 64);
  add(10, DefaultAlgoMask, DefaultChunkSize);
  add(64, AllAlgosMask, 64);
  add(3000, AllAlgosMask, 64);
  add(3000, MaskOf(AlgoId::Sha256), 100);
  add(3000, MaskOf(AlgoId::Xxh128), 100);
  // One chunk, which is shared with a helper.
  add(200'000, AllButMd2, DefaultChunkSize);
  add(400'000, DefaultAlgoMask, 65536);
  return files;
}

void ExpectDigestsOf(const HashOutcome& outcome, const ScheduledFile& file) {
  EXPECT_EQ(outcome.bytesRead, file.size);
  EXPECT_EQ(outcome.digests.PresentMask(), file.mask);
  size_t i = 0;
  for (const AlgoId id : IdsFromMask(file.mask)) {
    const Digest& expected = file.digests[i++];
    EXPECT_TRUE(DigestEquals(outcome.digests[IndexOf(id)], expected.View())) << GetAlgo(id).tag;
  }
}

// What one thread of a front end does.
void HashSome(const std::vector<ScheduledFile>& files, DigestThreads& threads, uint64_t seed) {
  SCOPED_TRACE("caller of seed " + std::to_string(seed));
  Chance chance(seed);
  FileHasher hasher(threads);
  for (uint64_t i = 3 + chance.Below(6); i > 0; --i) {
    const ScheduledFile& file = files[chance.IndexIn(files.size())];
    std::atomic<bool> cancel = false;
    std::thread canceller;
    if (chance.OneIn(3)) {
      canceller = std::thread([&cancel, delay = std::chrono::microseconds(chance.Below(800))] {
        std::this_thread::sleep_for(delay);
        cancel = true;
      });
    }
    const HashOutcome outcome =
        hasher.HashFile(file.path, file.mask, {.cancel = &cancel, .chunkSize = file.chunkSize});
    if (canceller.joinable()) canceller.join();
    EXPECT_FALSE(outcome.changed);
    if (outcome.cancelled || outcome.error != 0) {
      ExpectNoDigests(outcome);
      EXPECT_FALSE(outcome.cancelled && outcome.error != 0);
      EXPECT_TRUE(!outcome.cancelled || cancel);
      EXPECT_TRUE(outcome.error == 0 || outcome.error == ReadError ||
                  outcome.error == ErrorNotSupported)
          << outcome.error;
    } else {
      ExpectDigestsOf(outcome, file);
    }
    if (chance.OneIn(5)) hasher.ReleaseMemory();
    if (chance.OneIn(5)) threads.EndIdleThreads();
    chance.Pause();
  }
}

TEST(FileHasherScheduleTest, FilesDoNotAffectEachOther) {
  TempTree tree;
  const std::vector<ScheduledFile> files = MakeFiles(tree);
  const uint64_t count = NumberFromEnvironment("SUMWRIGHT_SCHEDULES", DefaultSchedules);
  const uint64_t seed = NumberFromEnvironment("SUMWRIGHT_SEED", DefaultSeed);
  OwnResources before;
  for (uint64_t i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
    SCOPED_TRACE("schedule of seed " + std::to_string(seed + i));
    Chance chance(seed + i);
    {
      const SparseFaults faults(chance.OneIn(2) ? 0 : 10 + chance.Below(60), seed + i);
      DigestThreads threads(static_cast<uint32_t>(1 + chance.Below(5)));
      std::vector<std::thread> callers;
      for (uint64_t caller = 1 + chance.Below(3); caller > 0; --caller) {
        callers.emplace_back(
            [&, callerSeed = (seed + i) * 10 + caller] { HashSome(files, threads, callerSeed); });
      }
      if (chance.OneIn(2)) {
        chance.Pause();
        threads.EndIdleThreads();
      }
      for (std::thread& caller : callers) caller.join();
    }
    constexpr uint64_t warmUp = 3;
    if (i == warmUp) before = CountOwnResources();
  }
  if (count > 4) {
    EXPECT_EQ(WaitForResources(before), before);
  }
  ::testing::Test::RecordProperty("schedules", static_cast<int>(count));
}

}  // namespace
}  // namespace swr::testing
