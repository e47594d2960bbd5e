#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr uint8_t Wanted = 0xAA;
constexpr uint8_t Other = 0xBB;

struct SummaryCase {
  const char* description;
  std::vector<RowSetup> rows;
  bool active = false;
  ResultLine line;
};

TEST(VerificationSummaryTest, Table) {
  const RowSetup ok = {.name = u"ok", .digests = {{AlgoId::Sha256, Wanted}}, .expected = Wanted};
  const RowSetup failed = {
      .name = u"failed", .digests = {{AlgoId::Sha256, Other}}, .expected = Wanted};
  const RowSetup missing = {
      .name = u"missing", .status = RowStatus::Failed, .error = 2, .expected = Wanted};
  const RowSetup missingFolder = {
      .name = u"missing", .status = RowStatus::Failed, .error = 3, .expected = Wanted};
  const RowSetup unreadable = {
      .name = u"unreadable", .status = RowStatus::Failed, .error = 5, .expected = Wanted};
  const RowSetup waiting = {.name = u"w", .status = RowStatus::Waiting, .expected = Wanted};
  const RowSetup cancelled = {.name = u"c", .status = RowStatus::Cancelled, .expected = Wanted};
  const RowSetup plain = {.name = u"plain", .digests = {{AlgoId::Sha256, Wanted}}};
  const RowSetup plainWaiting = {.name = u"plain", .status = RowStatus::Waiting};
  const SummaryCase cases[] = {
      {"no rows", {}, false, {u"", ResultKind::None}},
      {"no row has an expected digest", {plain}, false, {u"", ResultKind::None}},
      {"no row has an expected digest, while hashing",
       {plainWaiting},
       true,
       {u"", ResultKind::None}},
      // Still hashing.
      {"one file, with the plural", {waiting}, true, {u"Verifying 1 files...", ResultKind::Busy}},
      {"all listed rows are counted, plain rows are not",
       {ok, failed, missing, unreadable, waiting, plain, plainWaiting},
       true,
       {u"Verifying 5 files...", ResultKind::Busy}},
      {"a cancelled row while others are hashed",
       {ok, cancelled},
       true,
       {u"Verifying 2 files...", ResultKind::Busy}},
      {"all verdicts are known although the worker has other work",
       {ok, ok, plainWaiting},
       true,
       {u"All 2 files are OK.", ResultKind::Good}},
      {"a mismatch is known although the worker has other work",
       {ok, failed, plainWaiting},
       true,
       {u"Not all files match: 1 OK, 1 FAILED.", ResultKind::Bad}},
      // All OK.
      {"one", {ok}, false, {u"The file is OK.", ResultKind::Good}},
      {"one among plain rows", {plain, ok, plain}, false, {u"The file is OK.", ResultKind::Good}},
      {"two", {ok, ok}, false, {u"All 2 files are OK.", ResultKind::Good}},
      {"twelve", std::vector<RowSetup>(12, ok), false, {u"All 12 files are OK.", ResultKind::Good}},
      {"a cancelled row with the digest it needs",
       {{.name = u"c",
         .digests = {{AlgoId::Sha256, Wanted}},
         .status = RowStatus::Cancelled,
         .expected = Wanted}},
       false,
       {u"The file is OK.", ResultKind::Good}},
      // Not all OK.
      {"FAILED alone", {failed}, false, {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}},
      {"missing alone",
       {missing},
       false,
       {u"Not all files match: 0 OK, 1 missing.", ResultKind::Bad}},
      {"unreadable alone",
       {unreadable},
       false,
       {u"Not all files match: 0 OK, 1 unreadable.", ResultKind::Bad}},
      {"not checked alone",
       {cancelled},
       false,
       {u"Not all files match: 0 OK, 1 not checked.", ResultKind::Bad}},
      {"a waiting row without a job",
       {waiting, ok},
       false,
       {u"Not all files match: 1 OK, 1 not checked.", ResultKind::Bad}},
      {"one good, one missing",
       {ok, missing},
       false,
       {u"Not all files match: 1 OK, 1 missing.", ResultKind::Bad}},
      {"a missing file and a missing folder",
       {missing, missingFolder, ok},
       false,
       {u"Not all files match: 1 OK, 2 missing.", ResultKind::Bad}},
      {"everything, in the order of the words",
       {cancelled, unreadable, missing, failed, ok, waiting, unreadable, missing, failed, missing,
        ok, ok, failed, failed, ok, ok},
       false,
       {u"Not all files match: 5 OK, 4 FAILED, 3 missing, 2 unreadable, 2 not checked.",
        ResultKind::Bad}},
      {"FAILED and not checked",
       {failed, cancelled, failed},
       false,
       {u"Not all files match: 0 OK, 2 FAILED, 1 not checked.", ResultKind::Bad}},
  };
  for (const SummaryCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    for (const RowSetup& row : test.rows) AddRow(window, row);
    window.queue.snapshot.active = test.active;
    window.expected.Compare();
    EXPECT_EQ(window.Result(), test.line);
    EXPECT_TRUE(window.queue.jobs.empty());
  }
}

TEST(VerificationSummaryTest, TheBoxTakesPrecedence) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Sha256, Other}}, .expected = Wanted});
  window.view.SetExpectedText(u"SHA256: " + FilledHex(32, 0xCC));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"No match. a has a different SHA-256.", ResultKind::Bad}));
  EXPECT_EQ(window.StatusCell(0), u"FAILED");
  window.view.SetExpectedText(u"rubbish");
  EXPECT_EQ(
      window.Result(),
      (ResultLine{u"This doesn't look like a hash. Paste the hex or base64 value from the website.",
                  ResultKind::Hint}));
  window.view.SetExpectedText(u" ");
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}));
}

// The worker is often done before the window has taken the last finished jobs.
TEST(VerificationSummaryTest, PendingResultsAreNotReportedAsNotChecked) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Sha256, Wanted}}, .expected = Wanted});
  Row& row = AddRow(window, {.name = u"b", .status = RowStatus::Waiting, .expected = Wanted});
  window.hashing.QueueRow(row.id, MaskOf(AlgoId::Sha256));
  window.queue.jobs.clear();
  window.queue.snapshot.hasFinishedJobs = true;
  window.intake.OnTimer();
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 2 files...", ResultKind::Busy}));
  window.queue.snapshot.hasFinishedJobs = false;
  window.expected.Compare();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 1 OK, 1 not checked.", ResultKind::Bad}));
}

TEST(VerificationSummaryTest, TheTickThatEndsARunShowsTheSummary) {
  FakeWindow window;
  Row& row = AddRow(window, {.name = u"a", .status = RowStatus::Waiting, .expected = Wanted});
  window.hashing.QueueRow(row.id, MaskOf(AlgoId::Sha256));
  window.expected.Compare();
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  // Cancelled while the worker is still reading the file.
  window.queue.snapshot.active = true;
  window.edits.CancelAll();
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  window.queue.snapshot.active = false;
  window.intake.OnTimer();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 1 not checked.", ResultKind::Bad}));
}

}  // namespace
}  // namespace app::testing
