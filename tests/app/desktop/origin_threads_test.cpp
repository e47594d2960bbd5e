#include "app/desktop/origin_threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "swr/system/fault_injection.h"
#include "tests/support/end_of_life.h"
#include "tests/support/fault_plan.h"
#include "tests/support/gate.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using swr::ZoneRecord;
using swr::testing::EndOfLife;
using swr::testing::Gate;
using swr::testing::InstalledFaults;
using Clock = std::chrono::steady_clock;

constexpr milliseconds LongTime{30'000};
constexpr milliseconds NoTime{0};

// Of a file that was downloaded from its path.
ZoneRecord RecordOf(const std::u16string& path) {
  return {.found = true, .zoneId = swr::InternetZone, .hostUrl = path};
}

TEST(OriginThreadsTest, ReturnsARecordThatIsReadInTime) {
  const std::thread::id window = std::this_thread::get_id();
  std::atomic<bool> isOtherThread = false;
  std::atomic<int> announcements = 0;
  OriginThreads origins(
      [&](const std::u16string& path) {
        isOtherThread = std::this_thread::get_id() != window;
        return RecordOf(path);
      },
      [&] { ++announcements; }, LongTime);
  EXPECT_EQ(origins.ReadOrigin(1, u"a"), RecordOf(u"a"));
  EXPECT_TRUE(isOtherThread);
  EXPECT_EQ(origins.ReadOrigin(2, u"b"), RecordOf(u"b"));
  EXPECT_TRUE(origins.TakeLateOrigins().empty());
  EXPECT_EQ(announcements, 0);
}

TEST(OriginThreadsTest, AnnouncesALateRecordWhichCanBeTakenOnce) {
  Gate gate;
  std::promise<void> announced;
  OriginThreads origins(
      [&](const std::u16string& path) {
        gate.Pass();
        return RecordOf(path);
      },
      [&] { announced.set_value(); }, NoTime);
  EXPECT_FALSE(origins.ReadOrigin(7, u"a"));
  EXPECT_TRUE(origins.TakeLateOrigins().empty());
  gate.Open();
  ASSERT_EQ(announced.get_future().wait_for(LongTime), std::future_status::ready);
  const std::vector<RowOrigin> late = origins.TakeLateOrigins();
  ASSERT_EQ(late.size(), 1u);
  EXPECT_EQ(late[0].rowId, 7u);
  EXPECT_EQ(late[0].record, RecordOf(u"a"));
  EXPECT_TRUE(origins.TakeLateOrigins().empty());
}

// The first record arrives while the window waits for the second.
TEST(OriginThreadsTest, ALateRecordIsNotMistakenForTheAwaitedOne) {
  Gate gate;
  std::promise<void> announced;
  const OriginThreads::ReadFunction read = [&](const std::u16string& path) {
    if (path == u"late") {
      gate.Pass();
    } else {
      gate.Open();
      announced.get_future().wait_for(LongTime);
    }
    return RecordOf(path);
  };
  // Long enough for the second record, which the first has to wait for.
  OriginThreads origins(
      read, [&] { announced.set_value(); }, milliseconds(1000));
  EXPECT_FALSE(origins.ReadOrigin(1, u"late"));
  EXPECT_EQ(origins.ReadOrigin(2, u"other"), RecordOf(u"other"));
  const std::vector<RowOrigin> late = origins.TakeLateOrigins();
  ASSERT_EQ(late.size(), 1u);
  EXPECT_EQ(late[0].rowId, 1u);
}

TEST(OriginThreadsTest, WaitsNoLongerThanAMessageMayTake) {
  constexpr milliseconds longest{20};
  Gate gate;
  const auto life = std::make_shared<EndOfLife>();
  auto best = Clock::duration::max();
  {
    OriginThreads origins(
        [&gate, token = life->TakeToken()](const std::u16string&) {
          gate.Pass();
          return ZoneRecord{};
        },
        [] {});
    // On a busy machine a single wait can be longer.
    for (uint64_t row = 1; row <= 5; ++row) {
      const auto start = Clock::now();
      EXPECT_FALSE(origins.ReadOrigin(row, u"a"));
      best = std::min(best, Clock::now() - start);
    }
  }
  EXPECT_GE(best, OriginThreads::LongestWait);
  EXPECT_LE(best, longest);
  gate.Open();
  life->Wait();
}

TEST(OriginThreadsTest, ClosingAbandonsAReadThatDoesNotReturn) {
  Gate gate;
  const auto life = std::make_shared<EndOfLife>();
  std::atomic<int> announcements = 0;
  auto origins = std::make_unique<OriginThreads>(
      [&gate, token = life->TakeToken()](const std::u16string& path) {
        gate.Pass();
        return RecordOf(path);
      },
      [&] { ++announcements; }, NoTime);
  EXPECT_FALSE(origins->ReadOrigin(1, u"a"));
  gate.WaitForArrival();
  origins.reset();
  gate.Open();
  life->Wait();
  EXPECT_EQ(announcements, 0) << "the window does not exist any more";
}

TEST(OriginThreadsTest, WithoutAThreadNoRecordIsFound) {
  std::atomic<int> reads = 0;
  std::atomic<int> announcements = 0;
  OriginThreads origins(
      [&](const std::u16string& path) {
        ++reads;
        return RecordOf(path);
      },
      [&] { ++announcements; }, LongTime);
  {
    const InstalledFaults faults({{.call = swr::SystemCall::StartThread, .code = 8}});
    EXPECT_EQ(origins.ReadOrigin(1, u"a"), ZoneRecord{});
  }
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(announcements, 0);
  EXPECT_EQ(origins.ReadOrigin(2, u"b"), RecordOf(u"b"));
  EXPECT_TRUE(origins.TakeLateOrigins().empty());
}

}  // namespace
}  // namespace app::testing
