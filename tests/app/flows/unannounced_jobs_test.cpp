// Results whose announcement failed, so that no message tells the window about them.
#include <gtest/gtest.h>

#include <string>

#include "swr/hash/digest_text.h"
#include "swr/hash/hasher.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

TEST(UnannouncedResultsTest, TheTimerKeepsRunningWhileResultsAreWaiting) {
  FakeWindow window;
  Row& row = AddRow(window, {.name = u"a", .status = RowStatus::Waiting, .expected = 1});
  window.hashing.QueueAll();
  const HashJob job = window.queue.jobs.at(0);
  window.queue.jobs.clear();
  window.queue.snapshot.hasFinishedJobs = true;
  window.intake.OnTimer();
  EXPECT_TRUE(window.desktop.timerRuns);
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));

  window.queue.snapshot.hasFinishedJobs = false;
  window.Report(job, {});
  EXPECT_EQ(row.status, RowStatus::Done);
  window.intake.OnTimer();
  EXPECT_FALSE(window.desktop.timerRuns);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}));
}

TEST(UnannouncedResultsTest, TheTimerKeepsRunningWhileAJobRuns) {
  FakeWindow window;
  window.AddRow(u"a");
  window.hashing.QueueAll();
  window.intake.OnTimer();
  EXPECT_TRUE(window.desktop.timerRuns);
}

}  // namespace
}  // namespace app::testing
