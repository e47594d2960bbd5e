#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;

constexpr uint8_t Wanted = 0xAA;
constexpr uint8_t Other = 0xBB;

constexpr AlgoMask Of16 =
    MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Xxh128) | MaskOf(AlgoId::Md4) | MaskOf(AlgoId::Md2);
constexpr AlgoMask Of32 =
    MaskOf(AlgoId::Sha256) | MaskOf(AlgoId::Sha3_256) | MaskOf(AlgoId::Blake3);

std::u16string WantedHex(size_t bytes) { return FilledHex(bytes, Wanted); }

const std::vector<FilledDigest>& Other32() {
  static const auto digests = Filled({AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3}, Other);
  return digests;
}

// The jobs queued since the last call: the name of the row and the algorithms of each.
using QueuedJobs = std::vector<std::pair<std::u16string, AlgoMask>>;
QueuedJobs TakeJobs(FakeWindow& window) {
  QueuedJobs queued;
  for (const HashJob& job : window.queue.jobs) queued.emplace_back(job.path->Text(), job.mask);
  window.queue.jobs.clear();
  return queued;
}

// ---- What is queued.

TEST(WideningTest, QueuesAllCandidatesUntilTheyAreKnown) {
  FakeWindow window;
  Row& row = AddRow(window, {.name = u"a.iso", .digests = Filled({AlgoId::Sha256}, Other)});
  window.view.SetExpectedText(WantedHex(16));
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].rowId, row.id);
  EXPECT_EQ(window.queue.jobs[0].mask, Of16);
  EXPECT_EQ(row.status, RowStatus::Waiting);
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  EXPECT_TRUE(window.desktop.timerRuns);

  window.intake.OnTimer();
  EXPECT_EQ(window.queue.jobs.size(), 1u) << "queued only once";
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  window.Finish();
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(
      window.Result(),
      (ResultLine{u"No match. a.iso has a different MD5, XXH128, MD4 and MD2.", ResultKind::Bad}));
}

struct WideningCase {
  const char* description;
  std::vector<RowSetup> rows;
  std::u16string box;
  QueuedJobs queued;
};

TEST(WideningTest, Table) {
  const WideningCase cases[] = {
      {"a row matches already",
       {{.name = u"a", .digests = {{AlgoId::Md5, Wanted}}}},
       WantedHex(16),
       {}},
      {"a match in one row ends it for all",
       {{.name = u"a"}, {.name = u"b", .digests = {{AlgoId::Md5, Wanted}}}, {.name = u"c"}},
       WantedHex(16),
       {}},
      {"only missing digests",
       {{.name = u"a", .digests = Filled({AlgoId::Sha256, AlgoId::Blake3}, Other)},
        {.name = u"b", .digests = Filled({AlgoId::Sha3_256}, Other)},
        {.name = u"c", .digests = Other32()}},
       WantedHex(32),
       {{u"a", MaskOf(AlgoId::Sha3_256)}, {u"b", MaskOf(AlgoId::Sha256) | MaskOf(AlgoId::Blake3)}}},
      {"only the named algorithm",
       {{.name = u"a"}, {.name = u"b"}},
       u"SHA3-256 (x) = " + WantedHex(32),
       {{u"a", MaskOf(AlgoId::Sha3_256)}, {u"b", MaskOf(AlgoId::Sha3_256)}}},
      {"every row, whatever name is in the value",
       {{.name = u"a"}, {.name = u"b"}},
       WantedHex(20) + u"  b",
       {{u"a", MaskOf(AlgoId::Sha1)}, {u"b", MaskOf(AlgoId::Sha1)}}},
      {"a failed row is not queued",
       {{.name = u"a", .status = RowStatus::Failed, .error = 2}, {.name = u"b"}},
       WantedHex(20),
       {{u"b", MaskOf(AlgoId::Sha1)}}},
      {"a waiting row gets a second job",
       {{.name = u"a", .status = RowStatus::Waiting}},
       WantedHex(32),
       {{u"a", Of32}}},
      {"a cancelled row is queued again",
       {{.name = u"a", .status = RowStatus::Cancelled}},
       WantedHex(32),
       {{u"a", Of32}}},
      {"text that is not a hash queues nothing", {{.name = u"a"}}, u"hello", {}},
      {"an empty box queues nothing", {{.name = u"a"}}, u"", {}},
  };
  for (const WideningCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    for (const RowSetup& row : test.rows) AddRow(window, row);
    window.view.SetExpectedText(test.box);
    EXPECT_EQ(TakeJobs(window), test.queued);
  }
}

TEST(WideningTest, QueuedDigestsAreNotQueuedAgain) {
  FakeWindow window;
  Row& row = AddRow(window, {.name = u"a", .status = RowStatus::Waiting});
  window.hashing.QueueRow(row.id, MaskOf(AlgoId::Sha256));
  TakeJobs(window);
  window.view.SetExpectedText(WantedHex(32));
  EXPECT_EQ(TakeJobs(window), (QueuedJobs{{u"a", Of32 & ~MaskOf(AlgoId::Sha256)}}));
}

TEST(WideningTest, ChangesNeitherSelectionNorColumns) {
  FakeWindow window;
  AddRow(window, {.name = u"a"});
  const int rebuilds = window.view.columnRebuilds;
  window.view.SetExpectedText(WantedHex(64));
  window.Finish();
  EXPECT_EQ(window.options.algorithms, swr::DefaultAlgoMask);
  EXPECT_EQ(window.view.columnRebuilds, rebuilds);
}

TEST(WideningTest, TheFirstMatchEndsIt) {
  FakeWindow window;
  AddRow(window, {.name = u"a"});
  AddRow(window, {.name = u"b"});
  window.view.SetExpectedText(WantedHex(20));
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  swr::HashOutcome found;
  found.digests.Make(swr::IndexOf(AlgoId::Sha1)).bytes.fill(Wanted);
  window.Finish(found);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Match. The SHA-1 of a is the expected hash.", ResultKind::Good}));
  EXPECT_EQ(window.queue.jobs.size(), 1u) << "queued jobs continue";

  AddRow(window, {.name = u"c"});
  window.expected.Compare();
  EXPECT_EQ(window.queue.jobs.size(), 1u);

  // Without the match the other candidates are queued again.
  window.RemoveRows({0});
  EXPECT_EQ(TakeJobs(window),
            (QueuedJobs{{u"b", MaskOf(AlgoId::Sha1)}, {u"c", MaskOf(AlgoId::Sha1)}}));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
}

TEST(WideningTest, RowsAddedLaterAreIncluded) {
  swr::testing::TempTree tree;
  const std::u16string first = tree.AddFile(u"first", "1");
  const std::u16string second = tree.AddFile(u"second", "2");
  FakeWindow window;
  window.view.SetExpectedText(WantedHex(64));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Add the file to compare with this hash (SHA-512 or SHA3-512).",
                        ResultKind::Hint}));
  constexpr AlgoMask of64 = MaskOf(AlgoId::Sha512) | MaskOf(AlgoId::Sha3_512);
  window.adding.AddPaths({first});
  EXPECT_EQ(TakeJobs(window), (QueuedJobs{{first, swr::DefaultAlgoMask}, {first, of64}}));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  window.adding.AddPaths({second});
  EXPECT_EQ(TakeJobs(window), (QueuedJobs{{second, swr::DefaultAlgoMask}, {second, of64}}));
}

TEST(WideningTest, EachNewValueQueuesItsOwnCandidates) {
  FakeWindow window;
  Row& row = AddRow(window, {.name = u"a"});
  window.view.SetExpectedText(WantedHex(4));
  window.view.SetExpectedText(WantedHex(20));
  window.view.SetExpectedText(u"");
  EXPECT_EQ(TakeJobs(window),
            (QueuedJobs{{u"a", MaskOf(AlgoId::Crc32)}, {u"a", MaskOf(AlgoId::Sha1)}}));
  EXPECT_EQ(row.pendingMask, MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Sha1));
}

TEST(WideningTest, ADownloadIsAddedHashedAndCompared) {
  FakeWindow window;
  window.algorithms.Select(MaskOf(AlgoId::Sha256));
  Row& row = window.AddRow(u"a.iso");
  window.hashing.QueueAll();
  window.Finish();
  EXPECT_EQ(row.status, RowStatus::Done);

  window.view.SetExpectedText(FakeDigestText(AlgoId::Sha3_256));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  EXPECT_EQ(window.StatusCell(0), u"Waiting");
  window.Finish();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Match. The SHA3-256 of a.iso is the expected hash.", ResultKind::Good}));
  EXPECT_EQ(window.StatusCell(0), u"Match (SHA3-256)");
  EXPECT_EQ(window.cells.TintOf(0), RowTint::Good);
  EXPECT_EQ(window.columns.Defs().size(), 5u);
}

// ---- Cancel.

TEST(CancelWithABoxTest, TheLineShowsNoMatchAtOnceAndNothingIsQueuedAgain) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = Filled({AlgoId::Sha256}, Other)});
  AddRow(window, {.name = u"b", .digests = Other32()});
  const ResultLine noMatch = {u"No match. None of the 2 files has this hash.", ResultKind::Bad};
  window.view.SetExpectedText(WantedHex(32));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  ASSERT_FALSE(window.queue.jobs.empty());
  const HashJob running = window.queue.jobs.front();

  window.edits.CancelAll();
  EXPECT_EQ(window.Result(), noMatch);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(window.StatusCell(0), u"Cancelled");
  EXPECT_EQ(window.StatusCell(1), u"Done");

  window.Report(running, {.cancelled = true});
  window.intake.OnTimer();
  EXPECT_EQ(window.Result(), noMatch);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_FALSE(window.desktop.timerRuns);

  // A value entered now is a new one, and so is the same value entered again.
  const QueuedJobs again = {{u"a", MaskOf(AlgoId::Sha3_256) | MaskOf(AlgoId::Blake3)}};
  window.view.SetExpectedText(WantedHex(32));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  EXPECT_EQ(TakeJobs(window), again);
  window.edits.CancelAll();
  EXPECT_EQ(window.Result(), noMatch);
  window.view.SetExpectedText(FilledHex(32, 0xCC));
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
  EXPECT_EQ(TakeJobs(window), again);
}

TEST(CancelWithABoxTest, TheSameValueAfterAnEmptyBoxIsANewOne) {
  FakeWindow window;
  AddRow(window, {.name = u"a"});
  window.view.SetExpectedText(WantedHex(20));
  window.edits.CancelAll();
  window.view.SetExpectedText(u"");
  window.view.SetExpectedText(WantedHex(20));
  EXPECT_EQ(TakeJobs(window), (QueuedJobs{{u"a", MaskOf(AlgoId::Sha1)}}));
}

TEST(CancelWithABoxTest, ACancelledRowDoesNotDelayTheVerdict) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .status = RowStatus::Cancelled});
  Row& b = AddRow(window, {.name = u"b"});
  window.view.SetExpectedText(WantedHex(20));
  window.edits.CancelAll();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"No match. None of the 2 files has this hash.", ResultKind::Bad}));
  b.status = RowStatus::Waiting;
  window.Recount();
  window.expected.Compare();
  EXPECT_EQ(window.Result(), (ResultLine{u"Checking...", ResultKind::Busy}));
}

// ---- Other effects of the box.

TEST(ExpectedEditedTest, TheListIsRedrawnWhenAValueAppearsOrDisappears) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, Wanted}}});
  struct Case {
    const char* description;
    std::u16string box;
    bool redrawn;
  };
  const Case cases[] = {
      {"a value", WantedHex(16), true},
      {"another", FilledHex(16, Other), true},
      {"text that is not a hash", u"nothing", true},
      {"other text that is not a hash", u"anything", false},
      {"empty", u"", false},
      {"the value again", WantedHex(16), true},
      {"the same bytes for a named algorithm", u"MD5:" + WantedHex(16), true},
      {"empty again", u"", true},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    const int before = window.view.redrawnWhole;
    window.view.SetExpectedText(test.box);
    EXPECT_EQ(window.view.redrawnWhole > before, test.redrawn);
  }
}

TEST(ExpectedEditedTest, InvalidTextLeavesNoRowColoured) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, Wanted}}});
  window.view.SetExpectedText(WantedHex(16));
  EXPECT_EQ(window.cells.TintOf(0), RowTint::Good);
  EXPECT_EQ(window.StatusCell(0), u"Match (MD5)");
  window.view.SetExpectedText(WantedHex(16) + u"?");
  EXPECT_EQ(window.cells.TintOf(0), RowTint::None);
  EXPECT_EQ(window.StatusCell(0), u"Done");
  EXPECT_FALSE(window.rows.Expected());
  EXPECT_EQ(window.rows.Size(), 1u);
}

TEST(ExpectedEditedTest, ClearingTheListKeepsTheBox) {
  FakeWindow window;
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Sha1, Wanted}}});
  window.view.SetExpectedText(WantedHex(20));
  window.commands.Run(ID_CLEAR_LIST);
  EXPECT_EQ(window.view.expectedText, WantedHex(20));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Add the file to compare with this hash (SHA-1).", ResultKind::Hint}));
}

}  // namespace
}  // namespace app::testing
