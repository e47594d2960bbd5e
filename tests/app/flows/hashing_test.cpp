#include "app/flows/hashing.h"

#include <gtest/gtest.h>

#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr swr::AlgoMask Md5 = MaskOf(AlgoId::Md5);
constexpr swr::AlgoMask Sha256 = MaskOf(AlgoId::Sha256);
constexpr swr::AlgoMask Blake3 = MaskOf(AlgoId::Blake3);

TEST(QueueRowTest, QueuesOnlyDigestsThatAreNeitherKnownNorQueued) {
  FakeWindow window;
  Row& row = window.AddRow(u"a", 7);
  swr::DigestSlot known;
  known.present = true;
  row.digests.Set(swr::IndexOf(AlgoId::Md5), known);
  row.status = RowStatus::Done;

  window.hashing.QueueRow(row.id, Md5 | Sha256);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].rowId, row.id);
  EXPECT_EQ(window.queue.jobs[0].path->Text(), u"a");
  EXPECT_EQ(window.queue.jobs[0].size, 7u);
  EXPECT_EQ(window.queue.jobs[0].mask, Sha256);
  EXPECT_EQ(row.pendingMask, Sha256);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  EXPECT_TRUE(window.desktop.timerRuns);

  window.hashing.QueueRow(row.id, Md5 | Sha256);
  EXPECT_EQ(window.queue.jobs.size(), 1u) << "already queued";

  window.hashing.QueueRow(row.id, Sha256 | Blake3);
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
      {"hashing stays", RowStatus::Hashing, RowStatus::Hashing, true},
      {"done starts again", RowStatus::Done, RowStatus::Waiting, true},
      {"cancelled starts again", RowStatus::Cancelled, RowStatus::Waiting, true},
      {"failed is final", RowStatus::Failed, RowStatus::Failed, false},
  };
  for (const QueueCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    Row& row = window.AddRow(u"a");
    row.status = test.before;
    window.hashing.QueueRow(row.id, Sha256);
    EXPECT_EQ(row.status, test.after);
    EXPECT_EQ(window.queue.jobs.size(), test.queued ? 1u : 0u);
    EXPECT_EQ(window.desktop.timerRuns, test.queued);
  }
}

TEST(QueueAllRowsTest, AddsTheAlgorithmsThatAChecksumFileExpects) {
  FakeWindow window;
  window.AddRow(u"plain");
  Row& listed = window.AddRow(u"listed");
  listed.hasExpected = true;
  listed.extras.Make().expectedAlgos = {AlgoId::Blake3, AlgoId::Md4};
  window.options.algorithms = Sha256;
  window.hashing.QueueAll();
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  EXPECT_EQ(window.queue.jobs[0].mask, Sha256);
  EXPECT_EQ(window.queue.jobs[1].mask, Sha256 | Blake3 | MaskOf(AlgoId::Md4));
}

TEST(SelectionOfAlgorithmsTest, DigestsAreKeptWithoutTheirColumn) {
  FakeWindow window;
  Row& row = window.AddRow(u"a");
  window.algorithms.Select(Md5 | Sha256);
  window.Finish();
  EXPECT_EQ(row.status, RowStatus::Done);

  window.algorithms.Select(Md5);
  window.algorithms.Select(Md5 | Sha256);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(row.status, RowStatus::Done);
  EXPECT_TRUE(row.digests[swr::IndexOf(AlgoId::Sha256)].present);
}

TEST(SelectionOfAlgorithmsTest, ACancelledRowIsQueuedAgainForAllMissingDigests) {
  FakeWindow window;
  Row& row = window.AddRow(u"a");
  window.algorithms.Select(Md5 | Sha256);
  window.edits.CancelAll();
  EXPECT_EQ(row.status, RowStatus::Cancelled);

  window.algorithms.Select(Md5 | Sha256 | Blake3);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].mask, Md5 | Sha256 | Blake3);
}

}  // namespace
}  // namespace app::testing
