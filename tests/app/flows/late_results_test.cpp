// Results that arrive late: the file was cancelled and is being hashed again, or the value in the
// Expected hash box has queued more digests of the row.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr swr::AlgoMask Md5 = MaskOf(AlgoId::Md5);
constexpr swr::AlgoMask Sha1 = MaskOf(AlgoId::Sha1);
constexpr swr::AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

const ResultLine Checking = {u"Checking...", ResultKind::Busy};

// ---- A cancelled read ends after its file was queued again.

// A row whose running job, which covers the candidate of the value in the box, was cancelled.
struct CancelledWindow : FakeWindow {
  CancelledWindow() {
    algorithms.Select(Sha1);
    view.expectedText = FilledHex(20, 0xAA);
    expected.OnEdited();
    AddRow(u"a.iso");
    hashing.QueueAll();
    expected.Compare();
    running = queue.jobs.at(0);
    commands.Run(IDC_CANCEL);
  }
  void ReturnCancelled() { Report(running, {.cancelled = true}); }

  HashJob running;
};

TEST(LateCancelTest, AFileThatIsHashedAgainIsNotReportedAsAMismatch) {
  CancelledWindow window;
  ASSERT_EQ(window.Result().kind, ResultKind::Bad) << "the line is final while nothing is hashed";
  window.hashing.QueueAll();
  window.expected.Compare();
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.Result(), Checking);
  window.ReturnCancelled();
  EXPECT_EQ(window.Result(), Checking);
  window.intake.OnTimer();
  EXPECT_EQ(window.Result(), Checking);
  while (!window.queue.jobs.empty()) window.Finish();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"No match. a.iso has a different SHA-1.", ResultKind::Bad}));
  EXPECT_EQ(window.StatusCell(0), u"Done");
}

TEST(LateCancelTest, CancelledRowsStayCancelled) {
  CancelledWindow window;
  window.ReturnCancelled();
  window.intake.OnTimer();
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(window.StatusCell(0), u"Cancelled");
  EXPECT_EQ(window.Result().kind, ResultKind::Bad);
}

TEST(LateCancelTest, RowsCancelledTwiceStayCancelled) {
  CancelledWindow window;
  window.hashing.QueueAll();
  window.commands.Run(IDC_CANCEL);
  window.ReturnCancelled();
  window.intake.OnTimer();
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(window.StatusCell(0), u"Cancelled");
  EXPECT_EQ(window.Result().kind, ResultKind::Bad);
}

// ---- A lookup waits for a digest that does not arrive, and the box queues the row again.

TEST(LateLookupTest, ThePageOpensOnlyWithTheAwaitedResult) {
  FakeWindow window;
  window.algorithms.Select(Md5);
  Row& row = window.AddRow(u"a.iso");
  window.hashing.QueueAll();
  window.Finish();
  window.view.selected = {0};
  window.commands.Run(IDC_VIRUSTOTAL);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  const HashJob lookUp = window.queue.jobs.front();
  window.queue.jobs.clear();
  // The value is entered after the file was read and before its result is handled.
  window.view.expectedText = FilledHex(20, 0xAA);
  window.Report(lookUp, {});
  EXPECT_EQ(window.desktop.openedAddresses.size(), 1u);
  EXPECT_FALSE(window.lookUp.IsWaiting());
  EXPECT_EQ(row.status, RowStatus::Waiting) << "for the candidate of the box";
}

TEST(LateLookupTest, ACancelledReadEndsTheLookupWhateverIsInTheBox) {
  FakeWindow window;
  window.algorithms.Select(Md5);
  window.AddRow(u"a.iso");
  window.hashing.QueueAll();
  window.Finish();
  window.view.selected = {0};
  window.commands.Run(IDC_VIRUSTOTAL);
  const HashJob lookUp = window.queue.jobs.at(0);
  window.commands.Run(IDC_CANCEL);
  window.algorithms.Select(Md5 | Sha256);
  window.view.expectedText = FilledHex(20, 0xAA);
  window.Report(lookUp, {.cancelled = true});
  EXPECT_FALSE(window.lookUp.IsWaiting());
  while (!window.queue.jobs.empty()) window.Finish();
  EXPECT_TRUE(window.desktop.openedAddresses.empty()) << "the lookup has ended";
}

TEST(LateLookupTest, TheAwaitedResultCanBeAnywhereInABatch) {
  for (const bool comesFirst : {true, false}) {
    SCOPED_TRACE(comesFirst);
    FakeWindow window;
    window.algorithms.Select(Md5);
    window.AddRow(u"a.iso");
    window.AddRow(u"b.iso");
    window.hashing.QueueAll();
    window.Finish();
    window.Finish();
    window.view.selected = {0};
    window.commands.Run(IDC_VIRUSTOTAL);
    window.hashing.QueueRow(window.rows[1].id, Sha1);
    std::vector<std::pair<HashJob, swr::HashOutcome>> results;
    results.emplace_back(window.queue.jobs.at(comesFirst ? 0 : 1), swr::HashOutcome{});
    results.emplace_back(window.queue.jobs.at(comesFirst ? 1 : 0), swr::HashOutcome{});
    window.queue.jobs.clear();
    window.view.expectedText = FilledHex(48, 0xAA);
    window.ReportAll(std::move(results));
    EXPECT_EQ(window.desktop.openedAddresses.size(), 1u);
  }
}

}  // namespace
}  // namespace app::testing
