#include <gtest/gtest.h>

#include <string>

#include "app/verdicts/status_line.h"
#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr swr::AlgoMask Md5 = MaskOf(AlgoId::Md5);
constexpr swr::AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

// One row, hashed with `mask` in one job.
struct OneRow {
  explicit OneRow(swr::AlgoMask mask = Md5) : row(window.AddRow(u"C:\\folder\\a.bin", 100)) {
    window.hashing.QueueRow(row.id, mask);
  }
  FakeWindow window;
  Row& row;
};

TEST(JobIntakeTest, SuccessCopiesTheDigestsOfTheJob) {
  OneRow one(Md5 | Sha256);
  swr::HashOutcome outcome{.bytesRead = 90, .changed = true};
  one.window.Finish(outcome);
  EXPECT_EQ(one.row.status, RowStatus::Done);
  EXPECT_EQ(one.row.pendingMask, 0u);
  EXPECT_EQ(one.row.size, 90u);
  EXPECT_TRUE(one.row.changed);
  EXPECT_TRUE(one.row.digests[swr::IndexOf(AlgoId::Md5)].present);
  EXPECT_TRUE(one.row.digests[swr::IndexOf(AlgoId::Sha256)].present);
  EXPECT_FALSE(one.row.digests[swr::IndexOf(AlgoId::Sha1)].present);
  EXPECT_EQ(one.window.view.redrawn, std::vector<size_t>{0});
}

TEST(JobIntakeTest, ChangedIsSticky) {
  OneRow one;
  one.window.Finish({.changed = true});
  one.window.hashing.QueueRow(one.row.id, Sha256);
  one.window.Finish({.changed = false});
  EXPECT_TRUE(one.row.changed);
}

TEST(JobIntakeTest, WithDigestsPendingTheRowWaitsAgain) {
  OneRow one;
  one.window.hashing.QueueRow(one.row.id, Sha256);
  one.row.status = RowStatus::Hashing;
  one.window.Finish();
  EXPECT_EQ(one.row.status, RowStatus::Waiting);
  EXPECT_EQ(one.row.pendingMask, Sha256);
  EXPECT_TRUE(one.row.digests[swr::IndexOf(AlgoId::Md5)].present);
  one.window.Finish();
  EXPECT_EQ(one.row.status, RowStatus::Done);
}

TEST(JobIntakeTest, AnErrorFailsTheRowAndClearsItsPendingDigests) {
  OneRow one;
  one.window.hashing.QueueRow(one.row.id, Sha256);
  one.window.Finish({.error = swr::ErrorSharingViolation});
  EXPECT_EQ(one.row.status, RowStatus::Failed);
  EXPECT_EQ(one.row.error, swr::ErrorSharingViolation);
  EXPECT_EQ(one.row.pendingMask, 0u);
  EXPECT_EQ(one.row.size, 100u);
}

TEST(JobIntakeTest, ASecondJobThatSucceedsMakesAFailedRowDone) {
  OneRow one;
  one.window.hashing.QueueRow(one.row.id, Sha256);
  one.window.Finish({.error = swr::ErrorSharingViolation});
  one.window.Finish();
  EXPECT_EQ(one.row.status, RowStatus::Done);
  EXPECT_EQ(one.row.error, swr::ErrorSharingViolation) << "the error code is kept";
}

TEST(JobIntakeTest, CancelledWithNoDigestsPending) {
  OneRow one;
  one.window.Finish({.cancelled = true});
  EXPECT_EQ(one.row.status, RowStatus::Cancelled);
  EXPECT_EQ(one.row.pendingMask, 0u);
  EXPECT_FALSE(one.row.digests[swr::IndexOf(AlgoId::Md5)].present);
}

TEST(JobIntakeTest, CancelledWithDigestsPendingKeepsTheStatus) {
  OneRow one;
  one.window.hashing.QueueRow(one.row.id, Sha256);
  one.row.status = RowStatus::Hashing;
  one.window.Finish({.cancelled = true});
  EXPECT_EQ(one.row.status, RowStatus::Hashing);
  EXPECT_EQ(one.row.pendingMask, Sha256);
}

TEST(JobIntakeTest, AJobThatFinishedBeforeTheCancelIsStillUsed) {
  OneRow one;
  const HashJob job = one.window.queue.jobs.front();
  one.window.edits.CancelAll();
  EXPECT_EQ(one.row.status, RowStatus::Cancelled);
  one.window.Report(job, {});
  EXPECT_EQ(one.row.status, RowStatus::Done);
  EXPECT_TRUE(one.row.digests[swr::IndexOf(AlgoId::Md5)].present);
}

TEST(JobIntakeTest, AnOldCancelledResultShowsUntilTheNewJobEnds) {
  OneRow one;
  const HashJob old = one.window.queue.jobs.front();
  one.window.edits.CancelAll();
  one.window.hashing.QueueRow(one.row.id, Md5);
  EXPECT_EQ(one.row.status, RowStatus::Waiting);
  one.window.Report(old, {.cancelled = true});
  EXPECT_EQ(one.row.status, RowStatus::Cancelled);
  one.window.Finish();
  EXPECT_EQ(one.row.status, RowStatus::Done);
}

TEST(JobIntakeTest, AResultForAnUnknownRowOnlyRefreshesTheStatusLine) {
  OneRow one;
  one.window.view.statusText = u"stale";
  one.window.Report({.rowId = 4711, .path = nullptr, .mask = Md5, .size = 1}, {});
  EXPECT_EQ(one.row.status, RowStatus::Waiting);
  EXPECT_TRUE(one.window.view.redrawn.empty());
  EXPECT_NE(one.window.view.statusText, u"stale");
}

TEST(MarkHashingRowTest, MarksEveryRowOfThePathThatHasWork) {
  FakeWindow window;
  Row& first = window.AddRow(u"C:\\A.bin");
  Row& second = window.AddRow(u"c:\\a.BIN");
  Row& idle = window.AddRow(u"C:\\a.bin");
  Row& other = window.AddRow(u"C:\\b.bin");
  Row& failed = window.AddRow(u"C:\\a.bin");
  for (Row* row : {&first, &second, &other}) window.hashing.QueueRow(row->id, Md5);
  failed.status = RowStatus::Failed;
  failed.pendingMask = Md5;
  idle.status = RowStatus::Done;
  window.queue.snapshot = {.active = true, .currentPath = u"C:\\a.bin"};

  window.intake.OnTimer();
  EXPECT_EQ(first.status, RowStatus::Hashing);
  EXPECT_EQ(second.status, RowStatus::Hashing);
  EXPECT_EQ(idle.status, RowStatus::Done);
  EXPECT_EQ(other.status, RowStatus::Waiting);
  EXPECT_EQ(failed.status, RowStatus::Failed);
  EXPECT_EQ(window.view.redrawn, (std::vector<size_t>{0, 1}));

  window.intake.OnTimer();
  EXPECT_EQ(window.view.redrawn.size(), 2u) << "redrawn only once";
}

TEST(MarkHashingRowTest, TheRowOfTheJobIsEnoughWherePathsAreUnique) {
  swr::testing::TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  const std::u16string b = tree.AddFile(u"b");
  FakeWindow window;
  window.adding.AddPaths({a, b});
  ASSERT_TRUE(window.rows.PathsAreUnique());
  window.queue.snapshot = {.active = true, .currentRowId = window.rows[1].id, .currentPath = b};
  window.intake.OnTimer();
  EXPECT_EQ(window.rows[0].status, RowStatus::Waiting);
  EXPECT_EQ(window.rows[1].status, RowStatus::Hashing);
}

// A file that was removed and added again while its first job runs.
TEST(MarkHashingRowTest, AfterTheRowOfTheJobIsGoneItsPathIsUsed) {
  swr::testing::TempTree tree;
  const std::u16string a = tree.AddFile(u"a");
  FakeWindow window;
  window.adding.AddPaths({a});
  const uint64_t removed = window.rows[0].id;
  window.RemoveRows({0});
  window.adding.AddPaths({a});
  window.queue.snapshot = {.active = true, .currentRowId = removed, .currentPath = a};
  window.intake.OnTimer();
  EXPECT_EQ(window.rows[0].status, RowStatus::Hashing);
}

TEST(MarkHashingRowTest, BetweenJobsNoRowIsMarked) {
  FakeWindow window;
  Row& row = window.AddRow(u"");
  window.hashing.QueueRow(row.id, Md5);
  for (const bool active : {false, true}) {
    window.queue.snapshot = {.active = active, .currentPath = u""};
    window.intake.OnTimer();
    EXPECT_EQ(row.status, RowStatus::Waiting);
  }
}

TEST(OnProgressTimerTest, TheTickThatFindsTheWorkerIdleIsTheLast) {
  OneRow one;
  EXPECT_TRUE(one.window.desktop.timerRuns);
  one.window.intake.OnTimer();
  EXPECT_TRUE(one.window.desktop.timerRuns);
  one.window.Finish();
  EXPECT_TRUE(one.window.desktop.timerRuns) << "a result does not stop it";
  one.window.intake.OnTimer();
  EXPECT_FALSE(one.window.desktop.timerRuns);
  one.window.hashing.QueueRow(one.row.id, Sha256);
  EXPECT_TRUE(one.window.desktop.timerRuns);
}

TEST(OnProgressTimerTest, AfterClearListTheTimerStopsByItself) {
  OneRow one;
  one.window.queue.snapshot = {.active = true, .currentPath = u"C:\\folder\\a.bin"};
  one.window.edits.Clear();
  EXPECT_TRUE(one.window.desktop.timerRuns);
  EXPECT_TRUE(one.window.view.progress);
  one.window.queue.snapshot = {};
  one.window.intake.OnTimer();
  EXPECT_FALSE(one.window.desktop.timerRuns);
  EXPECT_EQ(one.window.view.statusText, u"");
  EXPECT_FALSE(one.window.view.progress);
}

TEST(IdleLineTest, Table) {
  struct Case {
    size_t rows;
    uint64_t bytes;
    std::u16string text;
  };
  const Case cases[] = {
      {0, 0, u""},
      {1, 0, u"1 file, 0 bytes"},
      {1, 1, u"1 file, 1 byte"},
      {2, 1536, u"2 files, 1.5 KB"},
      {100000, 10737418240, u"100000 files, 10 GB"},
  };
  for (const Case& test : cases) {
    const std::u16string text = IdleLine(test.rows, test.bytes);
    EXPECT_EQ(text, test.text) << swr::WideToUtf8(text);
  }
}

struct RunningCase {
  const char* description;
  WorkerSnapshot snapshot;
  std::u16string text;
  uint32_t position;
  uint64_t total;
};

TEST(RunningLineTest, Table) {
  const RunningCase cases[] = {
      {"one file, no speed yet",
       {.currentPath = u"C:\\x\\a.iso",
        .currentBytes = 50,
        .currentSize = 200,
        .doneBytes = 50,
        .totalBytes = 200,
        .remainingJobs = 1},
       u"Hashing a.iso (25%)",
       2500,
       200},
      {"the percentage is rounded down",
       {.currentPath = u"a",
        .currentBytes = 199,
        .currentSize = 200,
        .doneBytes = 199,
        .totalBytes = 200,
        .remainingJobs = 1},
       u"Hashing a (99%)",
       9950,
       200},
      {"an empty file has no percentage, and an empty total no position",
       {.currentPath = u"/tmp/empty", .remainingJobs = 1},
       u"Hashing empty",
       0,
       1},
      {"more files are queued",
       {.currentPath = u"C:/x/a", .currentSize = 10, .totalBytes = 30, .remainingJobs = 3},
       u"Hashing a (0%), 2 more",
       0,
       30},
      {"between two jobs",
       {.currentPath = u"", .doneBytes = 10, .totalBytes = 30, .remainingJobs = 2},
       u"Hashing , 1 more",
       3333,
       30},
      {"speed, and less than two seconds left",
       {.currentPath = u"a",
        .currentBytes = 1048576,
        .currentSize = 2097152,
        .doneBytes = 1048576,
        .totalBytes = 2097152,
        .remainingJobs = 1,
        .bytesPerSecond = 1048576.9},
       u"Hashing a (50%), 1.0 MB/s",
       5000,
       2097152},
      {"exactly two seconds left",
       {.currentPath = u"a",
        .currentBytes = 1000,
        .currentSize = 3000,
        .doneBytes = 1000,
        .totalBytes = 3000,
        .remainingJobs = 1,
        .bytesPerSecond = 1000},
       u"Hashing a (33%), 1000 bytes/s, 0:02 left",
       3333,
       3000},
      {"minutes do not roll over into hours",
       {.currentPath = u"a",
        .currentSize = 0,
        .doneBytes = 0,
        .totalBytes = 3700,
        .remainingJobs = 5,
        .bytesPerSecond = 1},
       u"Hashing a, 4 more, 1 byte/s, 61:40 left",
       0,
       3700},
      {"a time longer than the format can show",
       {.currentPath = u"a", .totalBytes = UINT64_MAX, .remainingJobs = 1, .bytesPerSecond = 0.5},
       u"Hashing a, 0 bytes/s, 35791394:07 left",
       0,
       UINT64_MAX},
      {"sizes whose product does not fit 64 bits",
       {.currentPath = u"a",
        .currentBytes = UINT64_MAX / 2,
        .currentSize = UINT64_MAX,
        .doneBytes = UINT64_MAX / 2,
        .totalBytes = UINT64_MAX,
        .remainingJobs = 1},
       u"Hashing a (49%)",
       4999,
       UINT64_MAX},
  };
  for (const RunningCase& test : cases) {
    SCOPED_TRACE(test.description);
    const std::u16string text = RunningLine(test.snapshot);
    EXPECT_EQ(text, test.text) << swr::WideToUtf8(text);
    const ProgressFigures figures = FiguresOf(test.snapshot);
    EXPECT_NEAR(figures.position, test.position, 1);
    EXPECT_EQ(figures.totalBytes, test.total);
    EXPECT_EQ(figures.doneBytes, test.snapshot.totalBytes == 0 ? 0 : test.snapshot.doneBytes);
  }
}

}  // namespace
}  // namespace app::testing
