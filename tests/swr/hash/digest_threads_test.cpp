// Lending threads, and the ring of chunks on which they work.
#include "swr/hash/digest_threads.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>

#include "swr/hash/digest_ring.h"
#include "tests/support/own_resources.h"

namespace swr::testing {
namespace {

using namespace std::chrono_literals;

// Closed until Open is called.
class Gate {
 public:
  void Open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    opened_.notify_all();
  }
  void Wait() {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(opened_.wait_for(lock, 60s, [this] { return isOpen_; }));
  }
  bool IsOpen() {
    const std::lock_guard lock(mutex_);
    return isOpen_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable opened_;
  bool isOpen_ = false;
};

// Work whose helpers stay until the gate is opened.
class HeldWork final : public HelpedWork {
 public:
  void Help() override {
    {
      const std::lock_guard lock(mutex_);
      ++helpers_;
      changed_.notify_all();
    }
    release.Wait();
  }
  void WaitForHelpers(int count) {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, 60s, [&] { return helpers_ >= count; }));
  }
  int helpers() {
    const std::lock_guard lock(mutex_);
    return helpers_;
  }

  Gate release;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int helpers_ = 0;
};

TEST(DigestThreadsTest, HasAtLeastTwoThreads) {
  EXPECT_GE(DigestThreads::DefaultLimit(), 2u);
  EXPECT_EQ(DigestThreads().Limit(), DigestThreads::DefaultLimit());
}

TEST(DigestThreadsTest, LendsUpToItsLimit) {
  DigestThreads threads(4);
  const DigestThreads::CallerAtWork caller(threads);
  HeldWork one;
  HeldWork other;
  EXPECT_TRUE(threads.Lend(one, 2));
  EXPECT_TRUE(threads.Lend(one, 2));
  EXPECT_FALSE(threads.Lend(one, 2)) << "the work has enough helpers";
  EXPECT_TRUE(threads.Lend(other, 2));
  EXPECT_FALSE(threads.Lend(other, 2)) << "four threads are hashing";
  EXPECT_FALSE(threads.IsAboveLimit());
  {
    const DigestThreads::CallerAtWork another(threads);
    EXPECT_TRUE(threads.IsAboveLimit());
  }
  one.WaitForHelpers(2);
  other.WaitForHelpers(1);
  one.release.Open();
  threads.TakeBack(one);
  EXPECT_TRUE(threads.Lend(other, 2));
  other.WaitForHelpers(2);
  other.release.Open();
  threads.TakeBack(other);
  EXPECT_TRUE(threads.IsBelowLimit());
}

TEST(DigestThreadsTest, StartsNoMoreThreadsThanItNeeds) {
  const size_t before = CountOwnResources().threads;
  {
    DigestThreads threads(8);
    EXPECT_EQ(CountOwnResources().threads, before);
    for (int i = 0; i < 50; ++i) {
      HeldWork work;
      work.release.Open();
      EXPECT_TRUE(threads.Lend(work, 1));
      threads.TakeBack(work);
    }
    EXPECT_EQ(CountOwnResources().threads, before + 1);
    threads.EndIdleThreads();
    EXPECT_EQ(WaitForThreads(before), before);
    threads.EndIdleThreads();

    // A thread that is helping is not ended.
    HeldWork work;
    threads.Lend(work, 1);
    work.WaitForHelpers(1);
    threads.EndIdleThreads();
    work.release.Open();
    threads.TakeBack(work);
    EXPECT_EQ(work.helpers(), 1);
  }
  EXPECT_EQ(WaitForThreads(before), before);
}

TEST(DigestThreadsTest, LeavesNoHandleOpen) {
  constexpr uint32_t helpers = 3;
  const auto lendToOneWork = [] {
    DigestThreads threads(helpers + 1);
    for (int i = 0; i < 2; ++i) {
      HeldWork work;
      for (uint32_t helper = 0; helper < helpers; ++helper) threads.Lend(work, helpers);
      work.WaitForHelpers(helpers);
      work.release.Open();
      threads.TakeBack(work);
      threads.EndIdleThreads();
    }
  };
  // The thread library opens some handles at its first use and keeps them.
  for (int i = 0; i < 3; ++i) lendToOneWork();
  const OwnResources before = CountOwnResources();
  for (int i = 0; i < 10; ++i) lendToOneWork();
  EXPECT_EQ(WaitForResources(before), before);
}

// --- The ring -----------------------------------------------------------------------------------

// Waits at a gate before each piece, and records what it is fed.
class GatedHasher final : public Hasher {
 public:
  explicit GatedHasher(Gate& gate) : gate_(gate) {}
  void Update(const void* data, uint64_t size) override {
    started.Open();
    gate_.Wait();
    fed.append(static_cast<const char*>(data), static_cast<size_t>(size));
  }
  Digest Final() override { return {}; }
  void Reset() override {}

  Gate started;
  std::string fed;

 private:
  Gate& gate_;
};

void Fill(Chunk& chunk, char letter, bool last = false) {
  chunk.Reserve(1);
  std::memset(chunk.data.get(), letter, 1);
  chunk.length = 1;
  chunk.last = last;
}

TEST(DigestRingTest, ReadsThreeChunksAheadOfTheSlowestHasher) {
  DigestThreads threads(2);
  const DigestThreads::CallerAtWork caller(threads);
  DigestRing ring(threads);
  Gate slow;
  Gate open;
  open.Open();
  GatedHasher slowHasher(slow);
  GatedHasher fastHasher(open);
  ASSERT_TRUE(ring.Start(std::array<Hasher*, 2>{&slowHasher, &fastHasher}, nullptr));
  Fill(ring.First(), 'a');
  ring.Publish();
  slowHasher.started.Wait();
  for (const char letter : {'b', 'c', 'd'}) {
    Chunk* chunk = ring.NextFree();
    ASSERT_NE(chunk, nullptr);
    Fill(*chunk, letter);
    ring.Publish();
  }
  EXPECT_FALSE(slow.IsOpen());
  std::thread opener([&] {
    std::this_thread::sleep_for(20ms);
    slow.Open();
  });
  Chunk* chunk = ring.NextFree();
  EXPECT_TRUE(slow.IsOpen()) << "the first chunk was reused before it was digested";
  EXPECT_EQ(fastHasher.fed.substr(0, 4), "abcd") << "the reader digests while it has to wait";
  Fill(*chunk, 'e', true);
  ring.Publish();
  ring.Finish();
  EXPECT_EQ(slowHasher.fed, "abcde");
  EXPECT_EQ(fastHasher.fed, "abcde");
  opener.join();
}

TEST(DigestRingTest, DoesNotStartWithoutAThread) {
  DigestThreads threads(1);
  const DigestThreads::CallerAtWork caller(threads);
  DigestRing ring(threads);
  Gate open;
  open.Open();
  GatedHasher hasher(open);
  EXPECT_FALSE(ring.Start(std::array<Hasher*, 1>{&hasher}, nullptr));
  EXPECT_FALSE(ring.IsRunning());
}

TEST(DigestRingTest, StopsInTheMiddle) {
  DigestThreads threads(3);
  const DigestThreads::CallerAtWork caller(threads);
  DigestRing ring(threads);
  Gate open;
  open.Open();
  GatedHasher hasher(open);
  for (int published = 0; published < 4; ++published) {
    ASSERT_TRUE(ring.Start(std::array<Hasher*, 1>{&hasher}, nullptr));
    for (int i = 0; i < published; ++i) {
      Fill(i == 0 ? ring.First() : *ring.NextFree(), 'a');
      ring.Publish();
    }
    ring.Stop();
    ring.Stop();
    EXPECT_FALSE(ring.IsRunning());
    EXPECT_TRUE(threads.IsBelowLimit());
  }
}

}  // namespace
}  // namespace swr::testing
