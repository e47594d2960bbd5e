#include "app/flows/list_edits.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;

TEST(RemoveRowsTest, RemovesTheRowsAndTheirJobs) {
  FakeWindow window;
  std::vector<uint64_t> ids;
  for (const char16_t* name : {u"a", u"b", u"c", u"d"}) ids.push_back(window.AddRow(name).id);
  window.hashing.QueueAll();
  window.view.selected = {0, 2};

  window.RemoveRows({0, 2});
  EXPECT_EQ(window.queue.removed, (std::vector<uint64_t>{ids[0], ids[2]}));
  ASSERT_EQ(window.rows.Size(), 2u);
  EXPECT_EQ(window.rows[0].Path(), u"b");
  EXPECT_EQ(window.rows[1].Path(), u"d");
  EXPECT_EQ(window.rows.Find(ids[3]), &window.rows[1]);
  EXPECT_EQ(window.rows.Find(ids[2]), nullptr);
  EXPECT_EQ(window.view.rowCount, 2u);
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.queue.jobs.size(), 2u);
}

TEST(RemoveRowsTest, RepeatedAndUnknownIdsAreIgnored) {
  FakeWindow window;
  const uint64_t a = window.AddRow(u"a").id;
  const uint64_t b = window.AddRow(u"b").id;
  window.edits.RemoveRows({a, 99, a});
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].id, b);
  window.edits.RemoveRows({a});
  EXPECT_EQ(window.rows.Size(), 1u);
}

TEST(RemoveRowsTest, NothingSelectedRemovesNothing) {
  FakeWindow window;
  window.AddRow(u"a");
  window.RemoveRows({});
  EXPECT_EQ(window.rows.Size(), 1u);
}

TEST(RemoveRowsTest, ALateResultFindsNoRow) {
  FakeWindow window;
  window.AddRow(u"a");
  Row& b = window.AddRow(u"b");
  window.hashing.QueueAll();
  const HashJob running = window.queue.jobs.front();
  window.RemoveRows({0});
  const int rebuilds = window.view.columnRebuilds;
  window.Report(running, {.cancelled = true});
  EXPECT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(b.status, RowStatus::Waiting);
  EXPECT_TRUE(window.view.redrawn.empty());
  EXPECT_EQ(window.view.columnRebuilds, rebuilds);
}

TEST(ClearListTest, DropsRowsAndJobs) {
  FakeWindow window;
  const uint64_t id = window.AddRow(u"a").id;
  window.hashing.QueueAll();
  window.edits.Clear();
  EXPECT_TRUE(window.rows.IsEmpty());
  EXPECT_EQ(window.rows.Find(id), nullptr);
  EXPECT_EQ(window.queue.cancels, 1);
  EXPECT_EQ(window.view.rowCount, 0u);
  EXPECT_EQ(window.view.statusText, u"");
  EXPECT_FALSE(window.view.progress);
}

TEST(CancelAllTest, OnlyRowsWithPendingWorkAreCancelled) {
  FakeWindow window;
  Row& done = window.AddRow(u"done");
  window.hashing.QueueAll();
  window.Finish();
  Row& failed = window.AddRow(u"failed");
  failed.status = RowStatus::Failed;
  Row& hashing = window.AddRow(u"hashing");
  Row& waiting = window.AddRow(u"waiting");
  window.hashing.QueueAll();
  hashing.status = RowStatus::Hashing;

  window.edits.CancelAll();
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
