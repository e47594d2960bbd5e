#include "app/intake/file_intake.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "swr/system/error_codes.h"
#include "tests/support/end_of_life.h"
#include "tests/support/fault_plan.h"
#include "tests/support/gate.h"
#include "tests/support/own_resources.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using swr::SystemCall;
using swr::testing::Gate;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;

constexpr milliseconds LongTime{30'000};

// Gives each batch back, as the window does.
std::vector<IntakeBatch> TakeAll(Intake& intake) {
  std::vector<IntakeBatch> all;
  while (intake.WaitForBatch(std::chrono::steady_clock::now() + LongTime)) {
    std::unique_ptr<IntakeBatch> batch = intake.Take();
    all.push_back(*batch);
    intake.GiveBack(std::move(batch));
  }
  return all;
}

size_t CountFiles(const std::vector<IntakeBatch>& batches) {
  size_t count = 0;
  for (const IntakeBatch& batch : batches) count += batch.files.size();
  return count;
}

bool NoAnnouncement() { return true; }

TEST(FileIntakeTest, WorksOnRequestsInOrder) {
  TempTree tree;
  for (int i = 0; i < 600; ++i) {
    tree.AddFile(u"folder/" + std::u16string(1, static_cast<char16_t>(u'0' + i % 10)) +
                 std::u16string(static_cast<size_t>(i / 10 + 1), u'x'));
  }
  const std::u16string list = tree.AddFile(u"list.sha256", std::string(64, '1') + "  a\n");
  FileIntake intake(NoAnnouncement);
  const uint64_t first = intake.Start(PathsRequest{.paths = {tree.Path(u"folder")}});
  const uint64_t second = intake.Start(ChecksumFileRequest{list});
  EXPECT_NE(first, 0u);
  EXPECT_NE(first, second);
  const std::vector<IntakeBatch> batches = TakeAll(intake);
  EXPECT_EQ(CountFiles(batches), 601u);
  std::vector<uint64_t> ended;
  for (const IntakeBatch& batch : batches) {
    EXPECT_EQ(batch.requestId, ended.empty() ? first : second);
    if (batch.end) ended.push_back(batch.requestId);
  }
  EXPECT_EQ(ended, (std::vector<uint64_t>{first, second}));
}

TEST(FileIntakeTest, FilesCanBeTakenWhileTheNextCallHangs) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  const std::u16string b = tree.AddFile(u"b");
  Gate gate;
  std::atomic<int> announcements = 0;
  // Two calls for a: whether it is a folder, and its info.
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 3, .before = [&] { gate.Pass(); }}});
  FileIntake intake([&] { return ++announcements > 0; });
  intake.Start(PathsRequest{.paths = {a, b}});
  gate.WaitForArrival();
  const auto batch = intake.Take();
  ASSERT_TRUE(batch);
  ASSERT_EQ(batch->files.size(), 1u);
  EXPECT_EQ(batch->files[0].row.Path(), a);
  EXPECT_FALSE(batch->end);
  EXPECT_EQ(announcements, 1);
  gate.Open();
  EXPECT_EQ(CountFiles(TakeAll(intake)), 1u);
  EXPECT_FALSE(intake.Take());
}

// A window that waits for a request is not woken for each file of it.
TEST(FileIntakeTest, WaitsForFullBatchesAndEnds) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  Gate gate;
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 4, .before = [&] { gate.Pass(); }}});
  FileIntake intake(NoAnnouncement);
  EXPECT_FALSE(intake.WaitForBatch(std::chrono::steady_clock::now() + LongTime))
      << "there is no request";
  intake.Start(PathsRequest{.paths = std::vector<std::u16string>(400, a)});
  gate.WaitForArrival();
  EXPECT_FALSE(intake.WaitForBatch(std::chrono::steady_clock::now() + milliseconds(5)));
  gate.Open();
  ASSERT_TRUE(intake.WaitForBatch(std::chrono::steady_clock::now() + LongTime));
  EXPECT_EQ(intake.Take()->files.size(), 256u);
  ASSERT_TRUE(intake.WaitForBatch(std::chrono::steady_clock::now() + LongTime));
  const auto last = intake.Take();
  EXPECT_EQ(last->files.size(), 144u);
  EXPECT_TRUE(last->end);
  EXPECT_FALSE(intake.WaitForBatch(std::chrono::steady_clock::now() + LongTime));
}

TEST(FileIntakeTest, AnnouncesAgainOnRequestOrAfterAFailedAnnouncement) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  std::atomic<int> announcements = 0;
  std::atomic<bool> canAnnounce = false;
  FileIntake intake([&] {
    ++announcements;
    return canAnnounce.load();
  });
  intake.Start(PathsRequest{.paths = {a}});
  // For the file and for the end, because the first announcement failed.
  while (announcements < 2) std::this_thread::yield();
  canAnnounce = true;
  EXPECT_EQ(CountFiles(TakeAll(intake)), 1u);
  EXPECT_TRUE(intake.AnnounceNext());
  announcements = 0;
  intake.Start(PathsRequest{.paths = {a, a, a}});
  while (announcements == 0) std::this_thread::yield();
  EXPECT_FALSE(intake.AnnounceNext()) << "the first file has been announced and not taken";
  EXPECT_EQ(CountFiles(TakeAll(intake)), 3u);
  EXPECT_EQ(announcements, 1);
}

TEST(FileIntakeTest, ACancelAlsoEndsWaitingRequests) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  const std::u16string b = tree.AddFile(u"b");
  Gate gate;
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 2, .before = [&] { gate.Pass(); }}});
  FileIntake intake(NoAnnouncement);
  intake.Start(PathsRequest{.paths = {a, b}});
  intake.Start(PathsRequest{.paths = {b}});
  gate.WaitForArrival();
  intake.Cancel();
  const uint64_t later = intake.Start(PathsRequest{.paths = {b}});
  gate.Open();
  const std::vector<IntakeBatch> batches = TakeAll(intake);
  EXPECT_EQ(CountFiles(batches), 2u) << "the file being looked up, and that of the later request";
  std::vector<bool> cancelled;
  for (const IntakeBatch& batch : batches) {
    if (batch.end) cancelled.push_back(batch.end->cancelled);
  }
  EXPECT_EQ(cancelled, (std::vector<bool>{true, true, false}));
  EXPECT_EQ(batches.back().requestId, later);
}

TEST(FileIntakeTest, ADiscardedRequestGivesNoFiles) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  Gate gate;
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 4, .before = [&] { gate.Pass(); }}});
  FileIntake intake(NoAnnouncement);
  intake.Start(PathsRequest{.paths = {a, a, a}});
  intake.Start(PathsRequest{.paths = {a}});
  gate.WaitForArrival();
  intake.Discard();
  EXPECT_FALSE(intake.Take());
  const uint64_t later = intake.Start(PathsRequest{.paths = {a}});
  gate.Open();
  const std::vector<IntakeBatch> batches = TakeAll(intake);
  ASSERT_EQ(batches.size(), 1u);
  EXPECT_EQ(batches[0].requestId, later);
  EXPECT_EQ(faults.Count(SystemCall::PathInfo), 6u) << "the second file was not looked up";
}

TEST(FileIntakeTest, WithoutAThreadTheFilesAreReadyWhenStartReturns) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  const InstalledFaults faults({{.call = SystemCall::StartThread, .nth = 1, .code = 8}});
  FileIntake intake(NoAnnouncement);
  intake.Start(PathsRequest{.paths = {a}});
  const auto batch = intake.Take();
  ASSERT_TRUE(batch);
  EXPECT_EQ(batch->files.size(), 1u);
  EXPECT_TRUE(batch->end);
  // The next request tries again.
  intake.Start(PathsRequest{.paths = {a}});
  EXPECT_EQ(CountFiles(TakeAll(intake)), 1u);
}

TEST(FileIntakeTest, ClosingDoesNotWaitForACallThatHangs) {
  const size_t threadsBefore = swr::testing::CountOwnResources().threads;
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  Gate gate;
  std::atomic<int> announcements = 0;
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 2, .before = [&] { gate.Pass(); }}});
  swr::testing::EndOfLife thread;
  {
    FileIntake intake([&, token = thread.TakeToken()] { return ++announcements > 0; });
    intake.Start(PathsRequest{.paths = {a, a}});
    gate.WaitForArrival();
  }
  gate.Open();
  thread.Wait();
  EXPECT_LE(swr::testing::WaitForThreads(threadsBefore), threadsBefore)
      << "the thread ends when its call returns";
  EXPECT_EQ(announcements, 0);
}

// Each request's files come in order, between its predecessor's end and its own. Under
// ThreadSanitizer the runs themselves are the test.
TEST(FileIntakeTest, RandomSchedules) {
  const uint64_t count = swr::testing::NumberFromEnvironment("SUMWRIGHT_SCHEDULES", 250);
  TempTree tree;
  std::vector<std::u16string> paths;
  for (const char16_t name : {u'a', u'b', u'c', u'd'}) {
    paths.push_back(tree.AddFile(u"folder/" + std::u16string(1, name)));
  }
  const std::u16string list = tree.AddFile(
      u"list.sha256", std::string(64, '1') + "  folder/a\n" + std::string(64, '1') + "  b\n");
  for (uint64_t seed = 1; seed <= count && !::testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    uint64_t last = 0;
    uint64_t expectedId = 1;
    bool dropsFiles = false;
    size_t files = 0;
    size_t wanted = 0;
    FileIntake intake([] { return true; });
    const auto countFiles = [&](const IntakeBatch& batch) {
      EXPECT_EQ(batch.requestId, expectedId);
      files += batch.files.size();
      if (batch.end) ++expectedId;
    };
    for (uint64_t step = random() % 20; step > 0; --step) {
      switch (random() % 6) {
        case 0:
          last = intake.Start(ChecksumFileRequest{list, random() % 2 == 0});
          wanted += 2;
          break;
        case 1:
          if (random() % 4 == 0) {
            intake.Cancel();
            dropsFiles = true;
          }
          break;
        case 2:
          if (const auto batch = intake.Take()) countFiles(*batch);
          break;
        case 3:
          std::this_thread::sleep_for(std::chrono::microseconds(random() % 200));
          break;
        case 4:
          if (random() % 4 == 0) {
            intake.Discard();
            dropsFiles = true;
            expectedId = last + 1;
          } else {
            intake.AnnounceNext();
          }
          break;
        default:
          last = intake.Start(PathsRequest{.paths = {tree.Path(u"folder"), paths[0]}});
          wanted += 5;
      }
    }
    if (random() % 3 == 0) continue;  // closed while work is left
    for (const IntakeBatch& batch : TakeAll(intake)) countFiles(batch);
    EXPECT_EQ(expectedId, last + 1);
    EXPECT_TRUE(dropsFiles || files == wanted) << files;
  }
}

}  // namespace
}  // namespace app::testing
