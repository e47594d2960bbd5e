#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "swr/system/error_codes.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr swr::AlgoMask Md5 = MaskOf(AlgoId::Md5);
constexpr swr::AlgoMask Sha256 = MaskOf(AlgoId::Sha256);
constexpr swr::AlgoMask Blake3 = MaskOf(AlgoId::Blake3);

TEST(FindRowTest, KnowsEachIdAndNoOther) {
  FakeWindow window;
  ListRow& a = window.AddRow(u"a");
  ListRow& b = window.AddRow(u"b");
  EXPECT_EQ(window.main.FindRow(a.id), &a);
  EXPECT_EQ(window.main.FindRow(b.id), &b);
  EXPECT_EQ(window.main.FindRow(0), nullptr);
  EXPECT_EQ(window.main.FindRow(99), nullptr);
}

// Ids rise as long as the program runs; what they take of memory must not.
TEST(FindRowTest, TheRowsOfALongSessionCostNoMoreThanThoseOfAShortOne) {
  FakeWindow window;
  const uint64_t first = window.AddRow(u"first").id;
  window.main.ClearList();
  window.nextId = uint64_t{1} << 50;
  ListRow& a = window.AddRow(u"a");
  ListRow& b = window.AddRow(u"b");
  EXPECT_EQ(window.main.FindRow(a.id), &a);
  EXPECT_EQ(window.main.FindRow(b.id), &b);
  EXPECT_EQ(window.main.FindRow(first), nullptr);
  EXPECT_EQ(window.main.FindRow(a.id - 1), nullptr);
  EXPECT_EQ(window.main.FindRow(b.id + 1), nullptr);
}

TEST(RepaintRowTest, PaintsTheRowOfTheIdOnly) {
  FakeWindow window;
  window.AddRow(u"a");
  ListRow& b = window.AddRow(u"b");
  window.main.RepaintRow(b.id);
  window.main.RepaintRow(99);
  EXPECT_EQ(window.view.redrawn, std::vector<size_t>{1});
}

TEST(QueueRowTest, AsksOnlyForWhatTheRowLacksAndNobodyAskedFor) {
  FakeWindow window;
  ListRow& row = window.AddRow(u"a", 7);
  row.digests.Make(swr::IndexOf(AlgoId::Md5)).present = true;
  row.status = RowStatus::Done;

  window.main.QueueRow(row, Md5 | Sha256);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].rowId, row.id);
  EXPECT_EQ(window.queue.jobs[0].path, u"a");
  EXPECT_EQ(window.queue.jobs[0].size, 7u);
  EXPECT_EQ(window.queue.jobs[0].mask, Sha256);
  EXPECT_EQ(row.pendingMask, Sha256);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  EXPECT_TRUE(window.desktop.timerRuns);

  window.main.QueueRow(row, Md5 | Sha256);
  EXPECT_EQ(window.queue.jobs.size(), 1u) << "already asked for";

  window.main.QueueRow(row, Sha256 | Blake3);
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  EXPECT_EQ(window.queue.jobs[1].mask, Blake3);
  EXPECT_EQ(row.pendingMask, Sha256 | Blake3);
}

struct QueueCase {
  const char* description;
  RowStatus before;
  RowStatus after;
  bool queued;
};

TEST(QueueRowTest, StatusTable) {
  const QueueCase cases[] = {
      {"waiting", RowStatus::Waiting, RowStatus::Waiting, true},
      {"hashing goes on", RowStatus::Hashing, RowStatus::Hashing, true},
      {"done starts again", RowStatus::Done, RowStatus::Waiting, true},
      {"cancelled starts again", RowStatus::Cancelled, RowStatus::Waiting, true},
      {"failed is final", RowStatus::Failed, RowStatus::Failed, false},
  };
  for (const QueueCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    ListRow& row = window.AddRow(u"a");
    row.status = test.before;
    window.main.QueueRow(row, Sha256);
    EXPECT_EQ(row.status, test.after);
    EXPECT_EQ(window.queue.jobs.size(), test.queued ? 1u : 0u);
    EXPECT_EQ(window.desktop.timerRuns, test.queued);
  }
}

TEST(QueueAllRowsTest, AddsWhatAChecksumFileExpects) {
  FakeWindow window;
  window.AddRow(u"plain");
  ListRow& listed = window.AddRow(u"listed");
  listed.hasExpected = true;
  listed.expectedAlgos = {AlgoId::Blake3, AlgoId::Md4};
  window.main.algorithms = Sha256;
  window.main.QueueAllRows();
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  EXPECT_EQ(window.queue.jobs[0].mask, Sha256);
  EXPECT_EQ(window.queue.jobs[1].mask, Sha256 | Blake3 | MaskOf(AlgoId::Md4));
}

TEST(SelectionOfAlgorithmsTest, DigestsSurviveTheirColumn) {
  FakeWindow window;
  ListRow& row = window.AddRow(u"a");
  window.main.SetAlgoMask(Md5 | Sha256);
  window.Finish();
  EXPECT_EQ(row.status, RowStatus::Done);

  window.main.SetAlgoMask(Md5);
  window.main.SetAlgoMask(Md5 | Sha256);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(row.status, RowStatus::Done);
  EXPECT_TRUE(row.digests[swr::IndexOf(AlgoId::Sha256)].present);
}

TEST(SelectionOfAlgorithmsTest, ACancelledRowStartsAgainForAllItLacks) {
  FakeWindow window;
  ListRow& row = window.AddRow(u"a");
  window.main.SetAlgoMask(Md5 | Sha256);
  window.main.CancelAll();
  EXPECT_EQ(row.status, RowStatus::Cancelled);

  window.main.SetAlgoMask(Md5 | Sha256 | Blake3);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].mask, Md5 | Sha256 | Blake3);
}

TEST(RemoveRowsTest, RemovesTheRowsAndTellsTheWorker) {
  FakeWindow window;
  std::vector<uint64_t> ids;
  for (const char16_t* name : {u"a", u"b", u"c", u"d"}) ids.push_back(window.AddRow(name).id);
  window.main.QueueAllRows();
  window.view.selected = {0, 2};

  window.main.RemoveRows(window.main.IdsOf({0, 2}));
  EXPECT_EQ(window.queue.removed, (std::vector<uint64_t>{ids[0], ids[2]}));
  ASSERT_EQ(window.main.rows.size(), 2u);
  EXPECT_EQ(window.main.rows[0]->path, u"b");
  EXPECT_EQ(window.main.rows[1]->path, u"d");
  EXPECT_EQ(window.main.FindRow(ids[3]), window.main.rows[1].get());
  EXPECT_EQ(window.main.FindRow(ids[2]), nullptr);
  EXPECT_EQ(window.view.rowCount, 2u);
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.queue.jobs.size(), 2u);
}

TEST(RemoveRowsTest, NothingSelectedRemovesNothing) {
  FakeWindow window;
  window.AddRow(u"a");
  window.main.RemoveRows(window.main.IdsOf({}));
  EXPECT_EQ(window.main.rows.size(), 1u);
}

TEST(RemoveRowsTest, ALateResultFindsNoRow) {
  FakeWindow window;
  window.AddRow(u"a");
  ListRow& b = window.AddRow(u"b");
  window.main.QueueAllRows();
  const HashJob running = window.queue.jobs.front();
  window.main.RemoveRows(window.main.IdsOf({0}));
  const int rebuilds = window.view.columnRebuilds;
  window.Report(running, {.cancelled = true});
  EXPECT_EQ(window.main.rows.size(), 1u);
  EXPECT_EQ(b.status, RowStatus::Waiting);
  EXPECT_TRUE(window.view.redrawn.empty());
  EXPECT_EQ(window.view.columnRebuilds, rebuilds);
}

TEST(ClearListTest, DropsRowsAndJobs) {
  FakeWindow window;
  const uint64_t id = window.AddRow(u"a").id;
  window.main.QueueAllRows();
  window.main.ClearList();
  EXPECT_TRUE(window.main.rows.empty());
  EXPECT_EQ(window.main.FindRow(id), nullptr);
  EXPECT_EQ(window.queue.cancels, 1);
  EXPECT_EQ(window.view.rowCount, 0u);
  EXPECT_EQ(window.view.statusText, u"");
  EXPECT_FALSE(window.view.progress);
}

TEST(CancelAllTest, OnlyRowsWithPendingWorkAreCancelled) {
  FakeWindow window;
  ListRow& done = window.AddRow(u"done");
  window.main.QueueAllRows();
  window.Finish();
  ListRow& failed = window.AddRow(u"failed");
  failed.status = RowStatus::Failed;
  ListRow& hashing = window.AddRow(u"hashing");
  ListRow& waiting = window.AddRow(u"waiting");
  window.main.QueueAllRows();
  hashing.status = RowStatus::Hashing;

  window.main.CancelAll();
  EXPECT_EQ(done.status, RowStatus::Done);
  EXPECT_TRUE(done.digests[swr::IndexOf(AlgoId::Md5)].present);
  EXPECT_EQ(failed.status, RowStatus::Failed);
  EXPECT_EQ(hashing.status, RowStatus::Cancelled);
  EXPECT_EQ(waiting.status, RowStatus::Cancelled);
  EXPECT_EQ(waiting.pendingMask, 0u);
  EXPECT_EQ(window.queue.cancels, 1);
  EXPECT_GT(window.view.redrawnWhole, 0);
}

}  // namespace
}  // namespace app::testing
