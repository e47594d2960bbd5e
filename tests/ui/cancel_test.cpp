// What the window shows while it hashes a long file, and the Cancel button.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint64_t GiB = uint64_t{1} << 30;

// A window that is hashing a file of 4 GiB, with two small ones queued after it.
class CancelTest : public ::testing::Test {
 protected:
  CancelTest() {
    swr::testing::ResizeFile(files_[0], 4 * GiB);
    window_.Drop(files_);
  }

  ::testing::AssertionResult WaitForProgress() const {
    if (WaitFor([&] { return window_.ProgressPosition() > 0; })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "the progress does not change";
  }
  ::testing::AssertionResult WaitForStatuses(const Texts& statuses, milliseconds timeout) const {
    Texts shown;
    const bool came =
        WaitFor([&] { return (shown = window_.Column(u"Status")) == statuses; }, timeout);
    if (came) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "instead: " << ::testing::PrintToString(shown);
  }

  TempTree tree_;
  std::vector<std::u16string> files_ = {tree_.AddFile(u"long.bin"),
                                        tree_.AddFile(u"abc.bin", DigestsOfAbc.input),
                                        tree_.AddFile(u"digits.bin", DigestsOfDigits.input)};
  RunningWindow window_;
};

TEST_F(CancelTest, ShowsTheProgress) {
  EXPECT_TRUE(window_.IsShown(IDC_CANCEL));
  EXPECT_TRUE(window_.IsShown(IDC_PROGRESS));
  EXPECT_TRUE(WaitForStatuses({u"Hashing", u"Waiting", u"Waiting"}, seconds(2)));
  ASSERT_TRUE(WaitForProgress());

  // "Hashing long.bin (12%), 2 more, 310 MB/s, 0:11 left", the speed after half a second.
  std::u16string line;
  EXPECT_TRUE(WaitFor([&] {
    line = window_.Text(IDC_STATUS_TEXT);
    return line.find(u"/s") != line.npos;
  })) << ::testing::PrintToString(line);
  EXPECT_TRUE(line.starts_with(u"Hashing long.bin (")) << ::testing::PrintToString(line);
  EXPECT_NE(line.find(u"%), 2 more, "), line.npos) << ::testing::PrintToString(line);

  const int early = window_.ProgressPosition();
  EXPECT_TRUE(WaitFor([&] { return window_.ProgressPosition() > early; }));
  EXPECT_LE(window_.ProgressPosition(), 10000);
  const std::vector<int> order = window_.TabOrder();
  EXPECT_EQ(order[order.size() - 2], IDC_CANCEL) << "only the links follow";
}

TEST_F(CancelTest, CancelStopsEverythingAtOnce) {
  ASSERT_TRUE(WaitForProgress());
  window_.Click(IDC_CANCEL);
  EXPECT_TRUE(WaitForStatuses({u"Cancelled", u"Cancelled", u"Cancelled"}, seconds(2)));
  EXPECT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_CANCEL); }, seconds(2)));
  EXPECT_FALSE(window_.IsShown(IDC_PROGRESS));
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"3 files, 4.0 GB");
  EXPECT_EQ(window_.Cell(0, u"MD5"), u"");
}

TEST_F(CancelTest, AnotherAlgorithmStartsCancelledRowsAgain) {
  ASSERT_TRUE(WaitForProgress());
  window_.Click(IDC_CANCEL);
  ASSERT_TRUE(WaitForStatuses({u"Cancelled", u"Cancelled", u"Cancelled"}, seconds(2)));
  // The rest of the file is no longer needed. Wait first, because a reader that has not noticed the
  // cancel yet would see the file change.
  window_.WaitUntilIdle();
  swr::testing::ResizeFile(files_[0], 0);
  window_.Click(IDC_ALGO_BLAKE3);
  EXPECT_TRUE(WaitForStatuses({u"Done", u"Done", u"Done"}, seconds(20)));
  EXPECT_EQ(window_.Cell(0, u"BLAKE3"), DigestsOfNothing.blake3);
  EXPECT_EQ(window_.Cell(1, u"BLAKE3"), DigestsOfAbc.blake3);
  EXPECT_EQ(window_.Cell(1, u"MD5"), DigestsOfAbc.md5) << "the cancelled digest is now calculated";
  EXPECT_EQ(window_.Cell(2, u"SHA-256"), DigestsOfDigits.sha256);
}

TEST_F(CancelTest, AfterRemovingTheRunningRowTheNextFilesAreHashed) {
  ASSERT_TRUE(WaitForProgress());
  window_.SelectOnly({0});
  window_.Command(ID_REMOVE);
  EXPECT_TRUE(WaitForStatuses({u"Done", u"Done"}, seconds(5)));
  EXPECT_EQ(window_.Column(u"Name"), (Texts{u"abc.bin", u"digits.bin"}));
  EXPECT_EQ(window_.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  window_.WaitUntilIdle();
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"2 files, 12 bytes");
}

TEST_F(CancelTest, ClearListStopsTheWork) {
  ASSERT_TRUE(WaitForProgress());
  window_.Command(ID_CLEAR_LIST);
  EXPECT_EQ(window_.RowCount(), 0);
  EXPECT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_CANCEL); }, seconds(2)));
  EXPECT_EQ(window_.Text(IDC_STATUS_TEXT), u"");
}

TEST_F(CancelTest, TheFocusGoesBackToTheListWhenCancelDisappears) {
  ASSERT_TRUE(WaitForProgress());
  window_.FocusOn(IDC_CANCEL);
  ASSERT_TRUE(WaitFor([&] { return window_.FocusedControl() == IDC_CANCEL; }));
  window_.Click(IDC_CANCEL);
  EXPECT_TRUE(WaitFor([&] { return window_.FocusedControl() == IDC_LIST; }));
}

}  // namespace
}  // namespace app::testing
