// Files that are truncated, extended or rewritten at a random moment while they are hashed: an
// outcome that is not marked as changed has the digests of the whole file, before the change or
// after it.
//
// SUMWRIGHT_CHANGES sets how many times each change is made, SUMWRIGHT_CHANGED_MIB the length of
// the long file and SUMWRIGHT_SEED the seed, which the test prints.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "swr/hash/digest_text.h"
#include "swr/hash/hash_file.h"
#include "swr/system/error_codes.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr uint64_t DefaultChanges = 20;
constexpr uint64_t DefaultMiB = 64;
constexpr AlgoMask Algos = MaskOf(AlgoId::Xxh128) | MaskOf(AlgoId::Crc32);

enum class Change : uint8_t { Cut, Grow, Rewrite };
constexpr struct {
  Change change;
  const char* name;
} changes[] = {{Change::Cut, "cut"}, {Change::Grow, "grown"}, {Change::Rewrite, "rewritten"}};

// The number of changes by the time at which they happened.
struct ChangeTimes {
  int before = 0;    // before the file was opened
  int marked = 0;    // during the hashing; the outcome is marked as changed
  int after = 0;     // after the end
  int unmarked = 0;  // during the hashing; the digest is that of the old or new file
};

class ChangingFile {
 public:
  ChangingFile(uint64_t size, uint64_t seed) : size_(size), random_(seed) {
    Recreate();
    const auto start = steady_clock::now();
    original_ = Hash(HashFile(path_, Algos, {}));
    duration_ = std::chrono::duration_cast<microseconds>(steady_clock::now() - start);
  }

  void HashOnceWhile(Change change, ChangeTimes& times) {
    Recreate();
    const uint64_t position = random_() % size_;
    const microseconds delay(random_() % static_cast<uint64_t>(duration_.count() * 5 / 4 + 50));
    std::atomic<bool> begins = false;
    steady_clock::time_point changeStart;
    steady_clock::time_point changeEnd;
    std::thread other([&] {
      while (!begins) std::this_thread::yield();
      const auto due = steady_clock::now() + delay;
      // A sleep could end later than a short file takes.
      while (steady_clock::now() < due) std::this_thread::yield();
      changeStart = steady_clock::now();
      Make(change, position);
      changeEnd = steady_clock::now();
    });
    begins = true;
    // Sometimes the change comes first.
    if (random_() % 8 == 0) std::this_thread::sleep_for(delay / 2);
    const auto hashStart = steady_clock::now();
    const HashOutcome outcome = HashFile(path_, Algos, {});
    const auto hashEnd = steady_clock::now();
    other.join();

    EXPECT_EQ(outcome.error, 0u);
    EXPECT_FALSE(outcome.cancelled);
    // The file does not change any more.
    const HashOutcome again = HashFile(path_, Algos, {});
    EXPECT_FALSE(again.changed);
    const std::string changed = Hash(again);
    EXPECT_NE(changed, original_);
    const std::string found = Hash(outcome);
    if (changeEnd < hashStart) {
      ++times.before;
      EXPECT_FALSE(outcome.changed);
      EXPECT_EQ(found, changed);
    } else if (changeStart > hashEnd) {
      ++times.after;
      // The time without a change; the first run takes longer.
      duration_ = std::chrono::duration_cast<microseconds>(hashEnd - hashStart);
      EXPECT_FALSE(outcome.changed);
      EXPECT_EQ(found, original_);
    } else if (outcome.changed) {
      ++times.marked;
    } else {
      ++times.unmarked;
      EXPECT_TRUE(found == original_ || found == changed) << found;
    }
  }

 private:
  // Filled with zeros, which take no space, and with a time so old that every write changes it.
  void Recreate() {
    WriteBytes(path_, "");
    ResizeFile(path_, size_);
    SetModifiedTime(path_, ModifiedTime(path_) - 36'000'000'000);
  }
  // One system call, so that there is no state between before and after.
  void Make(Change change, uint64_t position) {
    switch (change) {
      case Change::Cut:
        ResizeFile(path_, position);
        break;
      case Change::Grow:
        ResizeFile(path_, size_ + 1 + position / 8);
        break;
      case Change::Rewrite:
        OverwriteByte(path_, position, '\xA5');
        break;
    }
  }
  static std::string Hash(const HashOutcome& outcome) {
    std::string text;
    for (const AlgoId id : IdsFromMask(Algos)) {
      EXPECT_TRUE(outcome.digests[IndexOf(id)].present);
      text += DigestToHex(outcome.digests[IndexOf(id)], false) + " ";
    }
    return text;
  }

  const uint64_t size_;
  std::mt19937_64 random_;
  TempTree tree_;
  std::u16string path_ = tree_.AddFile(u"changing");
  std::string original_;
  microseconds duration_{0};
};

// Returns how many changes of each kind were marked.
std::vector<int> HashWhileItChanges(uint64_t size, uint64_t rounds) {
  const uint64_t seed = NumberFromEnvironment("SUMWRIGHT_SEED", 20261121);
  ChangingFile file(size, seed);
  std::vector<int> marked;
  for (const auto& [change, name] : changes) {
    ChangeTimes times;
    for (uint64_t i = 0; i < rounds && !::testing::Test::HasFailure(); ++i) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", " + name + ", time " + std::to_string(i));
      file.HashOnceWhile(change, times);
    }
    std::printf(
        "%llu bytes, %s %llu times, seed %llu: %d marked, %d before, %d after, %d harmless\n",
        static_cast<unsigned long long>(size), name, static_cast<unsigned long long>(rounds),
        static_cast<unsigned long long>(seed), times.marked, times.before, times.after,
        times.unmarked);
    marked.push_back(times.marked);
  }
  return marked;
}

TEST(HashFileChangingTest, MarksALongFileUnlessTheDigestIsThatOfAWholeFile) {
  const std::vector<int> marked =
      HashWhileItChanges(NumberFromEnvironment("SUMWRIGHT_CHANGED_MIB", DefaultMiB) << 20,
                         NumberFromEnvironment("SUMWRIGHT_CHANGES", DefaultChanges));
  for (const int count : marked) EXPECT_GT(count, 0) << "no change came in time";
}

// It is read in one call, on one thread, and so fast that most changes come too late.
TEST(HashFileChangingTest, MarksAShortFileUnlessTheDigestIsThatOfAWholeFile) {
  HashWhileItChanges(600'000, 5 * NumberFromEnvironment("SUMWRIGHT_CHANGES", DefaultChanges));
}

}  // namespace
}  // namespace swr::testing
