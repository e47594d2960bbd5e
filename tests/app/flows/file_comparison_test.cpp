#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;

constexpr swr::AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

const TaskDialogSpec Identical =
    MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                  u"a.bin\nb.bin\n\nCompared by SHA-256; the sizes are equal too.");
const TaskDialogSpec Different =
    MessageDialog(TaskDialogIcon::Warning, u"The two files are different.",
                  u"a.bin\nb.bin\n\nCompared by SHA-256.");
const TaskDialogSpec Unreadable =
    MessageDialog(TaskDialogIcon::Error, u"One of the files can't be read.", u"");

using Messages = std::vector<TaskDialogSpec>;

// Two rows, both selected and not hashed yet.
struct TwoRows {
  TwoRows() : a(window.AddRow(u"a.bin")), b(window.AddRow(u"b.bin")) {
    a.status = b.status = RowStatus::Done;
    window.view.selected = {0, 1};
  }
  void Compare() { window.commands.Run(ID_CTX_COMPARE); }
  // Finishes the front job with digests of this byte.
  void Finish(uint8_t fill) {
    swr::HashOutcome outcome;
    for (const AlgoId id : swr::IdsFromMask(swr::AllAlgosMask)) {
      outcome.digests.Make(swr::IndexOf(id)).bytes.fill(fill);
    }
    window.Finish(outcome);
  }

  FakeWindow window;
  Row& a;
  Row& b;
};

TEST(CompareTwoFilesTest, NeedsExactlyTwoRows) {
  for (const std::vector<size_t>& selected :
       {std::vector<size_t>{}, std::vector<size_t>{1}, std::vector<size_t>{0, 1, 2}}) {
    TwoRows two;
    two.window.AddRow(u"c.bin");
    two.window.view.selected = selected;
    two.Compare();
    EXPECT_TRUE(two.window.desktop.messages.empty());
    EXPECT_TRUE(two.window.queue.jobs.empty());
    EXPECT_FALSE(two.window.comparison.IsWaiting());
  }
}

TEST(CompareTwoFilesTest, SizesAloneAreEnough) {
  struct Case {
    const char* description;
    uint64_t sizeA;
    uint64_t sizeB;
    std::u16string content;
  };
  const Case cases[] = {
      {"one byte", 0, 1, u"a.bin (0 bytes)\nb.bin (1 byte)\n\nTheir sizes differ."},
      {"two sizes with the same short form", 1572864, 1572865,
       u"a.bin (1.5 MB)\nb.bin (1.5 MB)\n\nTheir sizes differ."},
      {"large and small", 10737418240, 12,
       u"a.bin (10 GB)\nb.bin (12 bytes)\n\nTheir sizes differ."},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    TwoRows two;
    two.a.size = test.sizeA;
    two.b.size = test.sizeB;
    two.Compare();
    EXPECT_EQ(two.window.desktop.messages,
              (Messages{MessageDialog(TaskDialogIcon::Warning, u"The two files are different.",
                                      test.content)}));
    EXPECT_TRUE(two.window.queue.jobs.empty());
    EXPECT_FALSE(two.window.comparison.IsWaiting());
  }
}

TEST(CompareTwoFilesTest, KnownDigestsAnswerAtOnce) {
  for (const bool equal : {true, false}) {
    TwoRows two;
    PutDigest(two.a, {AlgoId::Sha256, 1});
    PutDigest(two.b, {AlgoId::Sha256, static_cast<uint8_t>(equal ? 1 : 2)});
    // Only SHA-256 decides.
    PutDigest(two.a, {AlgoId::Md5, 1});
    PutDigest(two.b, {AlgoId::Md5, static_cast<uint8_t>(equal ? 2 : 1)});
    two.Compare();
    EXPECT_EQ(two.window.desktop.messages, Messages{equal ? Identical : Different});
    EXPECT_TRUE(two.window.queue.jobs.empty());
    EXPECT_FALSE(two.window.comparison.IsWaiting());
  }
}

TEST(CompareTwoFilesTest, MissingDigestsAreHashedFirst) {
  for (const bool equal : {true, false}) {
    TwoRows two;
    two.window.algorithms.Select(MaskOf(AlgoId::Md5));
    two.window.queue.jobs.clear();
    two.a.pendingMask = two.b.pendingMask = 0;
    const size_t columns = two.window.columns.Defs().size();
    two.Compare();
    EXPECT_TRUE(two.window.desktop.messages.empty());
    ASSERT_EQ(two.window.queue.jobs.size(), 2u);
    EXPECT_EQ(two.window.queue.jobs[0].rowId, two.a.id);
    EXPECT_EQ(two.window.queue.jobs[1].rowId, two.b.id);
    for (const HashJob& job : two.window.queue.jobs) EXPECT_EQ(job.mask, Sha256);
    EXPECT_EQ(two.window.StatusCell(0), u"Waiting");
    two.Finish(1);
    EXPECT_TRUE(two.window.desktop.messages.empty());
    two.Finish(equal ? 1 : 2);
    EXPECT_EQ(two.window.desktop.messages, Messages{equal ? Identical : Different});
    EXPECT_EQ(two.window.columns.Defs().size(), columns);
    EXPECT_EQ(two.window.options.algorithms, MaskOf(AlgoId::Md5));
  }
}

TEST(CompareTwoFilesTest, OnlyTheFileWithoutADigestIsHashed) {
  TwoRows two;
  PutDigest(two.a, {AlgoId::Sha256, 1});
  two.Compare();
  ASSERT_EQ(two.window.queue.jobs.size(), 1u);
  EXPECT_EQ(two.window.queue.jobs[0].rowId, two.b.id);
  two.Finish(1);
  EXPECT_EQ(two.window.desktop.messages, Messages{Identical});
}

TEST(CompareTwoFilesTest, TheUpperRowComesFirst) {
  TwoRows two;
  AddRow(two.window, {.name = u"c.bin", .digests = {{AlgoId::Sha256, 1}}});
  PutDigest(two.b, {AlgoId::Sha256, 1});
  two.window.view.selected = {1, 2};
  two.Compare();
  EXPECT_EQ(
      two.window.desktop.messages,
      (Messages{MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                              u"b.bin\nc.bin\n\nCompared by SHA-256; the sizes are equal too.")}));
}

TEST(CompareTwoFilesTest, TheSameFileInTwoRows) {
  TwoRows two;
  two.b.path = two.a.path;
  two.Compare();
  two.Finish(7);
  two.Finish(7);
  EXPECT_EQ(
      two.window.desktop.messages,
      (Messages{MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                              u"a.bin\na.bin\n\nCompared by SHA-256; the sizes are equal too.")}));
}

TEST(CompareTwoFilesTest, TheFileMayGrowWhileItIsHashed) {
  TwoRows two;
  two.Compare();
  two.window.Finish({.bytesRead = 999});
  two.window.Finish();
  EXPECT_NE(two.a.size, two.b.size);
  EXPECT_EQ(two.window.desktop.messages, Messages{Identical})
      << "sizes are compared only at the start";
}

// ---- Unreadable files.

struct FailedCase {
  const char* description;
  bool firstFailed;
  bool secondFailed;
  bool otherIsKnown;
  uint64_t secondSize = 100;  // the first has 100
  size_t jobs;                // before the answer
};

TEST(CompareTwoFilesTest, AFailedRowMakesItUnanswerable) {
  const FailedCase cases[] = {
      {"the first, the other known", true, false, true, 100, 0},
      {"the second, the other known", false, true, true, 100, 0},
      {"both", true, true, false, 100, 0},
      {"with different sizes", true, false, true, 5, 0},
      {"the second is still hashed", true, false, false, 100, 1},
      {"the first is still hashed", false, true, false, 5, 1},
  };
  for (const FailedCase& test : cases) {
    SCOPED_TRACE(test.description);
    TwoRows two;
    two.b.size = test.secondSize;
    for (auto [row, failed] : {std::pair{&two.a, test.firstFailed}, {&two.b, test.secondFailed}}) {
      if (failed) {
        row->status = RowStatus::Failed;
        row->error = swr::ErrorFileNotFound;
      } else if (test.otherIsKnown) {
        PutDigest(*row, {AlgoId::Sha256, 1});
      }
    }
    two.Compare();
    EXPECT_EQ(two.window.queue.jobs.size(), test.jobs);
    if (test.jobs > 0) {
      EXPECT_TRUE(two.window.desktop.messages.empty());
      two.Finish(1);
    }
    EXPECT_EQ(two.window.desktop.messages, Messages{Unreadable});
    EXPECT_FALSE(two.window.comparison.IsWaiting());
  }
}

TEST(CompareTwoFilesTest, AFileThatVanishesMeanwhile) {
  TwoRows two;
  two.Compare();
  two.window.Finish({.error = swr::ErrorFileNotFound});
  EXPECT_TRUE(two.window.desktop.messages.empty()) << "the other file is still pending";
  two.Finish(1);
  EXPECT_EQ(two.window.desktop.messages, Messages{Unreadable});
}

// ---- While a comparison waits.

TEST(CompareTwoFilesTest, ARemovedRowEndsItSilently) {
  TwoRows two;
  two.Compare();
  two.window.RemoveRows({0});
  two.Finish(1);
  EXPECT_TRUE(two.window.desktop.messages.empty());
  EXPECT_FALSE(two.window.comparison.IsWaiting());
}

TEST(CompareTwoFilesTest, ClearingTheListEndsIt) {
  TwoRows two;
  two.Compare();
  EXPECT_TRUE(two.window.comparison.IsWaiting());
  two.window.edits.Clear();
  EXPECT_FALSE(two.window.comparison.IsWaiting());
}

TEST(CompareTwoFilesTest, AfterCancelItWaitsUntilTheFilesAreHashedAgain) {
  TwoRows two;
  two.window.AddRow(u"c.bin");
  two.Compare();
  two.window.edits.CancelAll();
  EXPECT_TRUE(two.window.comparison.IsWaiting());
  two.window.hashing.QueueRow(two.window.rows[2].id, MaskOf(AlgoId::Md5));
  two.window.Finish();
  EXPECT_TRUE(two.window.desktop.messages.empty()) << "another row's result";

  two.window.algorithms.Select(Sha256);
  ASSERT_EQ(two.window.queue.jobs.size(), 3u);
  two.Finish(1);
  EXPECT_TRUE(two.window.desktop.messages.empty());
  two.Finish(1);
  EXPECT_EQ(two.window.desktop.messages, Messages{Identical});
  two.Finish(1);
  EXPECT_EQ(two.window.desktop.messages.size(), 1u);
}

TEST(CompareTwoFilesTest, AnotherComparisonReplacesIt) {
  TwoRows two;
  Row& c = two.window.AddRow(u"c.bin");
  c.status = RowStatus::Done;
  two.Compare();
  two.window.view.selected = {1, 2};
  two.Compare();
  two.Finish(1);
  two.Finish(2);
  EXPECT_TRUE(two.window.desktop.messages.empty());
  two.Finish(2);
  EXPECT_EQ(
      two.window.desktop.messages,
      (Messages{MessageDialog(TaskDialogIcon::Information, u"The two files are identical.",
                              u"b.bin\nc.bin\n\nCompared by SHA-256; the sizes are equal too.")}));
}

TEST(CompareTwoFilesTest, DifferentSizesDoNotAffectAWaitingOne) {
  TwoRows two;
  two.window.AddRow(u"c.bin", 5);
  two.Compare();
  two.window.view.selected = {0, 2};
  two.Compare();
  ASSERT_EQ(two.window.desktop.messages.size(), 1u);
  EXPECT_EQ(two.window.desktop.messages[0].content,
            u"a.bin (100 bytes)\nc.bin (5 bytes)\n\nTheir sizes differ.");
  two.Finish(1);
  two.Finish(1);
  ASSERT_EQ(two.window.desktop.messages.size(), 2u);
  EXPECT_EQ(two.window.desktop.messages[1], Identical);
}

TEST(CompareTwoFilesTest, ResultsDuringTheMessageDoNotRepeatIt) {
  TwoRows two;
  two.window.AddRow(u"c.bin");
  two.Compare();
  two.window.hashing.QueueRow(two.window.rows[2].id, Sha256);
  two.window.desktop.whileMessageShows = [&] {
    EXPECT_FALSE(two.window.comparison.IsWaiting());
    EXPECT_EQ(two.window.StatusCell(1), u"Done") << "the rows are up to date before the message";
    if (!two.window.queue.jobs.empty()) two.Finish(1);
  };
  two.Finish(1);
  two.Finish(1);
  EXPECT_EQ(two.window.desktop.messages, Messages{Identical});
  EXPECT_TRUE(two.window.queue.jobs.empty());
}

TEST(CompareTwoFilesTest, BothResultsInOneBatchGiveOneAnswer) {
  TwoRows two;
  two.Compare();
  std::vector<std::pair<HashJob, swr::HashOutcome>> results;
  for (const HashJob& job : two.window.queue.jobs) results.emplace_back(job, swr::HashOutcome{});
  two.window.queue.jobs.clear();
  two.window.ReportAll(std::move(results));
  EXPECT_EQ(two.window.desktop.messages, Messages{Identical});
}

// A cancelled row that is queued again is no longer reported as not checked.
TEST(CompareTwoFilesTest, TheVerdictFollowsRowsThatAreHashedAgain) {
  TwoRows two;
  Expect(two.a, FilledBytes(32, 1), {AlgoId::Sha256});
  two.a.status = RowStatus::Cancelled;
  two.window.Recount();
  two.window.expected.Compare();
  EXPECT_EQ(two.window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 1 not checked.", ResultKind::Bad}));
  two.window.view.redrawn.clear();
  two.Compare();
  EXPECT_EQ(two.window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  EXPECT_EQ(two.window.view.redrawn, (std::vector<size_t>{0, 1}));
}

}  // namespace
}  // namespace app::testing
