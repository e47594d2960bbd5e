// Files that are still being looked up when the request for them returns: they arrive in batches,
// and anything may happen in between.
#include "app/flows/file_arrivals.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/display_text.h"
#include "tests/support/abc_lists.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

// A window whose files are looked up one by one, when the test asks for the next.
class FileArrivalsTest : public VerificationTest {
 protected:
  FileArrivalsTest() {
    window.fileIntake.isHeld = true;
    window.algorithms.Select(swr::MaskOf(swr::AlgoId::Sha256));
  }
  std::u16string AddList(const std::string& text) { return tree.AddFile(u"list.sha256", text); }
  std::vector<std::u16string> Abc() const {
    return {tree.Path(u"a.bin"), tree.Path(u"b.bin"), tree.Path(u"c.bin")};
  }
  std::string LinesOfAbc() const {
    return Line(AbcSha256, "a.bin") + Line(AbcSha256, "b.bin") + Line(AbcSha256, "c.bin");
  }
};

TEST_F(FileArrivalsTest, RowsAppearAndAreQueuedWhileTheWalkContinues) {
  window.adding.AddPaths({tree.Root()});
  EXPECT_TRUE(window.rows.IsEmpty());
  EXPECT_FALSE(window.desktop.waiting);
  window.LookUpFiles(1);
  EXPECT_EQ(Names(), TextList{u"a.bin"});
  EXPECT_EQ(window.view.rowCount, 1u);
  EXPECT_EQ(window.queue.jobs.size(), 1u);
  window.Finish();
  EXPECT_EQ(window.StatusCell(0), u"Done");
  window.LookUpFiles(1);
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin"}));
  EXPECT_EQ(window.queue.jobs.size(), 1u);
  window.LookUpFiles();
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin", u"c.bin"}));
  EXPECT_EQ(window.rows[2].id, 3u);
  EXPECT_EQ(window.desktop.waits, 1);
}

// Waiting for the first files and updating a long list view would be too much for one message.
TEST_F(FileArrivalsTest, TheListViewIsUpdatedByTheNextMessageIfFilesAreStillToCome) {
  window.fileIntake.releasedAtOnce = 2;
  window.adding.AddPaths({tree.Root()});
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin"}));
  EXPECT_EQ(window.view.rowCount, 0u);
  EXPECT_TRUE(window.view.progress);
  EXPECT_TRUE(window.desktop.timerRuns);
  window.LookUpFiles(0);
  EXPECT_EQ(window.view.rowCount, 2u) << "although no further file has been found";
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  window.LookUpFiles();
  EXPECT_EQ(window.view.rowCount, 3u);
}

TEST_F(FileArrivalsTest, ARequestIsWorkInProgressUntilItEnds) {
  window.adding.AddPaths({tree.Root()});
  EXPECT_TRUE(window.desktop.timerRuns);
  EXPECT_TRUE(window.view.progress) << "with the Cancel button";
  EXPECT_EQ(window.view.statusText, u"Looking up files...");
  window.LookUpFiles(2);
  EXPECT_TRUE(window.view.progress);
  window.Finish();
  window.Finish();
  window.intake.OnTimer();
  EXPECT_EQ(window.view.statusText, u"Looking up files... 2 files, 6 bytes so far");
  EXPECT_TRUE(window.desktop.timerRuns) << "the worker is idle, but the intake is not";
  window.LookUpFiles();
  window.Finish();
  window.intake.OnTimer();
  EXPECT_EQ(window.view.statusText, u"3 files, 9 bytes");
  EXPECT_FALSE(window.view.progress);
  EXPECT_FALSE(window.desktop.timerRuns);
}

TEST_F(FileArrivalsTest, OnlyTheFirstNewRowIsSelectedAndTheUsersSelectionIsKept) {
  window.AddRow(u"old");
  window.view.selected = {0};
  window.adding.AddPaths({tree.Root()});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  window.LookUpFiles(1);
  EXPECT_EQ(window.view.selected, std::vector<size_t>{1});
  window.view.selected = {0};
  window.view.scrolledTo.reset();
  window.LookUpFiles();
  EXPECT_EQ(window.rows.Size(), 4u);
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});

  const std::u16string list = AddList(LinesOfAbc());
  window.verification.VerifyFile(list);
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  window.LookUpFiles(1);
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.view.scrolledTo, 1u) << "three rows were replaced, and one is back";
  window.view.selected = {1};
  window.view.scrolledTo.reset();
  window.LookUpFiles();
  EXPECT_EQ(window.view.selected, std::vector<size_t>{1});
  EXPECT_FALSE(window.view.scrolledTo);
}

TEST_F(FileArrivalsTest, RequestsAreAnsweredInOrder) {
  window.adding.AddPaths({tree.Path(u"b.bin")});
  window.verification.VerifyFile(AddList(LinesOfAbc()));
  window.adding.AddPaths({tree.Path(u"a.bin"), tree.Path(u"list.sha256")});
  window.LookUpFiles();
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin", u"c.bin", u"list.sha256"}))
      << "the list replaces the row of b.bin, and a.bin is not added again";
  EXPECT_EQ(window.rows[1].id, 3u);
  EXPECT_EQ(window.rows[3].id, 6u) << "the skipped a.bin has used up an id";
}

TEST_F(FileArrivalsTest, DuplicatesAreFoundAcrossBatchesAndRequests) {
  const std::u16string folder = tree.Path(u"./");
  window.adding.AddPaths({tree.Path(u"b.bin"), folder, folder});
  window.LookUpFiles(2);
  window.sorting.SortBy(0);
  window.sorting.SortBy(0);
  window.adding.AddPaths({tree.Path(u"C.BIN")});
  window.LookUpFiles();
  TextList names = Names();
  std::ranges::sort(names);
  EXPECT_EQ(names, (TextList{u"a.bin", u"b.bin", u"b.bin", u"c.bin"}))
      << "a walk from another spelling of the folder does not recognise earlier rows";
}

TEST_F(FileArrivalsTest, TheVerdictIsFinalOnlyAfterTheLastRowHasArrived) {
  window.verification.VerifyFile(AddList(LinesOfAbc() + "rubbish\n"));
  window.LookUpFiles(2);
  window.HashQueuedFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"OK (SHA-256)"}));
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 2 files...", ResultKind::Busy}));
  EXPECT_FALSE(window.view.banner);
  window.LookUpFiles(1);
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 3 files...", ResultKind::Busy}))
      << "there may be more lines";
  window.LookUpFiles();
  EXPECT_EQ(window.Result(), (ResultLine{u"All 3 files are OK.", ResultKind::Good}));
  EXPECT_EQ(window.banners.Kind(), BannerKind::SkippedLines);

  // Files that are added meanwhile don't concern the verdict about those of the checksum file.
  tree.AddFile(u"sub/d.bin", "abc");
  window.adding.AddPaths({tree.Path(u"sub")});
  EXPECT_EQ(window.Result(), (ResultLine{u"All 3 files are OK.", ResultKind::Good}));
}

TEST_F(FileArrivalsTest, TheLineSaysCheckingUntilTheLastRowHasArrived) {
  window.view.SetExpectedText(std::u16string(64, u'1'));
  EXPECT_EQ(window.view.resultKind, ResultKind::Hint) << "asks for a file";
  const ResultLine checking{u"Checking...", ResultKind::Busy};
  window.adding.AddPaths({tree.Root()});
  EXPECT_EQ(window.Result(), checking);
  window.LookUpFiles(1);
  EXPECT_EQ(window.queue.jobs.size(), 2u) << "the selection, and the other algorithms of 32 bytes";
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(), checking);
  window.LookUpFiles();
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(),
            (ResultLine{u"No match. None of the 3 files has this hash.", ResultKind::Bad}));
}

TEST_F(FileArrivalsTest, TheOfferOfAChecksumFileAppearsWithItsRow) {
  const std::u16string list = AddList(LinesOfAbc());
  window.adding.AddPaths({list});
  EXPECT_FALSE(window.view.banner);
  window.LookUpFiles();
  EXPECT_EQ(window.banners.Kind(), BannerKind::ChecksumFileOffer);
  EXPECT_EQ(window.banners.Payload(), list);
  window.bannerLinks.Follow(u"a");
  EXPECT_TRUE(window.rows.IsEmpty());
  window.LookUpFiles();
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin", u"c.bin"}));
}

TEST_F(FileArrivalsTest, ReplacedRowsAreRemovedTogetherWhenTheFirstFileArrives) {
  window.adding.AddPaths(Abc());
  window.LookUpFiles();
  const std::vector<uint64_t> ids = {window.rows[0].id, window.rows[1].id, window.rows[2].id};
  window.verification.VerifyFile(AddList(LinesOfAbc()));
  EXPECT_EQ(window.rows.Size(), 3u) << "the list does not change until the file has been read";
  const int paints = window.view.listPaints;
  window.LookUpFiles(1);
  EXPECT_EQ(Names(), TextList{u"a.bin"});
  EXPECT_EQ(window.queue.removed, ids);
  EXPECT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.view.listPaints, paints + 1);
  window.LookUpFiles();
  EXPECT_EQ(window.queue.removed, ids);
  EXPECT_EQ(window.view.rowCount, 3u);
}

// ---- Cancel and Clear List.

TEST_F(FileArrivalsTest, CancelEndsAWalk) {
  window.adding.AddPaths({tree.Root()});
  window.LookUpFiles(1);
  window.commands.Run(IDC_CANCEL);
  window.LookUpFiles();
  EXPECT_EQ(StatusCells(), TextList{u"Cancelled"});
  EXPECT_TRUE(window.queue.jobs.empty());
  window.intake.OnTimer();
  EXPECT_FALSE(window.desktop.timerRuns);
  EXPECT_FALSE(window.view.progress);
  EXPECT_EQ(window.view.statusText, u"1 file, 3 bytes");
}

TEST_F(FileArrivalsTest, FilesFoundBeforeACancelBecomeCancelledRows) {
  window.adding.AddPaths({tree.Root(), tree.Path(u"absent")});
  window.fileIntake.Release(4);
  window.commands.Run(IDC_CANCEL);
  window.LookUpFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"Cancelled", u"Cancelled", u"Cancelled", u"Missing"}));
  EXPECT_EQ(window.rows[0].size, 3u) << "its file info is kept";
  EXPECT_TRUE(window.queue.jobs.empty());
  // They are queued again like any cancelled row.
  window.algorithms.Select(swr::MaskOf(swr::AlgoId::Md5));
  EXPECT_EQ(window.queue.jobs.size(), 3u);
}

TEST_F(FileArrivalsTest, AfterACancelTheVerdictStillCountsEveryLine) {
  window.verification.VerifyFile(AddList(LinesOfAbc() + Line(AbcSha256, "absent.bin")));
  window.LookUpFiles(1);
  window.HashQueuedFiles();
  window.commands.Run(IDC_CANCEL);
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
  window.LookUpFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"Cancelled", u"Cancelled", u"Cancelled"}));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 1 OK, 3 not checked.", ResultKind::Bad}));
  EXPECT_TRUE(window.queue.jobs.empty());
  // Queued again, the absent file is reported as missing.
  window.algorithms.Select(swr::MaskOf(swr::AlgoId::Md5));
  window.HashQueuedFiles();
  EXPECT_EQ(window.StatusCell(3), u"Missing");
}

TEST_F(FileArrivalsTest, ARequestCancelledBeforeItBeginsEndsSilently) {
  window.adding.AddPaths({tree.Root()});
  window.verification.VerifyFile(tree.Path(u"absent.sha256"));
  window.verification.VerifyFile(AddList("rubbish\n"));
  window.LookUpFiles(1);
  window.commands.Run(IDC_CANCEL);
  window.LookUpFiles();
  EXPECT_EQ(window.rows.Size(), 1u);
  EXPECT_TRUE(window.desktop.messages.empty());
  EXPECT_FALSE(window.view.banner);
  EXPECT_FALSE(window.arrivals.Open().Any());
}

TEST_F(FileArrivalsTest, ARequestAfterACancelIsAnswered) {
  window.adding.AddPaths({tree.Root()});
  window.commands.Run(IDC_CANCEL);
  window.adding.AddPaths({tree.Path(u"b.bin")});
  window.LookUpFiles();
  EXPECT_EQ(Names(), TextList{u"b.bin"});
  EXPECT_EQ(window.queue.jobs.size(), 1u);
}

TEST_F(FileArrivalsTest, NothingArrivesAfterClearList) {
  window.adding.AddPaths({tree.Root()});
  window.verification.VerifyFile(AddList(LinesOfAbc()));
  window.LookUpFiles(2);
  window.commands.Run(ID_CLEAR_LIST);
  EXPECT_FALSE(window.arrivals.Open().Any());
  EXPECT_EQ(window.view.statusText, u"");
  EXPECT_FALSE(window.view.progress);
  window.LookUpFiles();
  EXPECT_TRUE(window.rows.IsEmpty());
  window.adding.AddPaths({tree.Path(u"b.bin")});
  window.LookUpFiles();
  EXPECT_EQ(Names(), TextList{u"b.bin"});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
}

TEST_F(FileArrivalsTest, RemovedRowsDoNotComeBackAndTheOtherFilesArrive) {
  window.adding.AddPaths({tree.Root()});
  window.LookUpFiles(2);
  window.RemoveRows({0, 1});
  window.LookUpFiles();
  EXPECT_EQ(Names(), TextList{u"c.bin"});
  EXPECT_EQ(window.queue.jobs.size(), 1u);
}

// Dropping files that are in the list already adds nothing, even if their rows are removed before
// the drop has been looked up.
TEST_F(FileArrivalsTest, RowsRemovedAfterTheirFilesWereDroppedAgainDoNotComeBack) {
  window.adding.AddPaths({tree.Root()});
  window.LookUpFiles();
  window.adding.AddPaths({tree.Path(u"./")});
  window.LookUpFiles();
  ASSERT_EQ(window.rows.Size(), 6u);
  window.adding.AddPaths({tree.Root()});
  window.RemoveRows({0, 1, 2, 3, 4, 5});
  window.LookUpFiles();
  EXPECT_TRUE(window.rows.IsEmpty());
  window.adding.AddPaths({tree.Root()});
  window.LookUpFiles();
  EXPECT_EQ(window.rows.Size(), 3u);
}

// ---- Messages.

TEST_F(FileArrivalsTest, AnUnreadableChecksumFileIsReportedWhenItsRequestEnds) {
  const std::u16string absent = tree.Path(u"absent.sha256");
  window.adding.AddPaths({tree.Path(u"a.bin")});
  window.verification.VerifyFile(absent);
  EXPECT_TRUE(window.desktop.messages.empty());
  window.LookUpFiles();
  EXPECT_EQ(window.desktop.messages,
            (std::vector<TaskDialogSpec>{MessageDialog(
                TaskDialogIcon::Error, u"The checksum file can't be read.",
                absent + u"\n\n" + swr::FormatErrorText(swr::ErrorFileNotFound) + u".")}));
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  EXPECT_FALSE(window.desktop.waiting);
}

// While a message is open, the window still handles its own messages.
TEST_F(FileArrivalsTest, FilesKeepArrivingWhileAMessageIsOpen) {
  const std::u16string empty = tree.AddFile(u"empty.sha256", "");
  window.verification.VerifyFile(empty);
  window.adding.AddPaths({tree.Path(u"c.bin"), tree.Path(u"b.bin")});
  window.verification.VerifyFile(empty);
  window.adding.AddPaths({tree.Path(u"a.bin")});
  TextList namesInFirst;
  bool isWaiting = true;
  window.desktop.whileMessageShows = [&] {
    isWaiting = window.desktop.waiting;
    if (window.desktop.messages.size() > 1) return;
    window.LookUpFiles(2);
    namesInFirst = Names();
    window.commands.Run(ID_SELECT_ALL);
  };
  window.LookUpFiles();
  EXPECT_FALSE(isWaiting);
  EXPECT_EQ(window.desktop.messages.size(), 2u);
  EXPECT_GE(namesInFirst.size(), 2u);
  EXPECT_EQ(Names(), (TextList{u"c.bin", u"b.bin", u"a.bin"}));
  EXPECT_EQ(window.view.rowCount, 3u);
  EXPECT_FALSE(window.arrivals.Open().Any());
}

TEST_F(FileArrivalsTest, TheListMayBeClearedWhileAMessageIsOpen) {
  window.verification.VerifyFile(tree.Path(u"absent.sha256"));
  window.adding.AddPaths({tree.Root()});
  window.desktop.whileMessageShows = [&] { window.commands.Run(ID_CLEAR_LIST); };
  window.LookUpFiles();
  EXPECT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_TRUE(window.rows.IsEmpty());
  EXPECT_EQ(window.view.statusText, u"");
}

}  // namespace
}  // namespace app::testing
