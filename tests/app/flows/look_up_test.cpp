#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr swr::AlgoMask Sha256 = swr::MaskOf(AlgoId::Sha256);

// The page of the digest that FakeWindow::Finish makes.
std::u16string PageOfFake() {
  return u"https://www.virustotal.com/gui/file/" + FakeDigestText(AlgoId::Sha256);
}

// A window with one selected row, hashed with MD5 only.
struct LookUpWindow : FakeWindow {
  LookUpWindow() {
    algorithms.Select(swr::MaskOf(AlgoId::Md5));
    Row& row = AddRow(u"a");
    hashing.QueueRow(row.id, options.algorithms);
    Finish();
    view.selected = {0};
  }
};

TEST(LookUpTest, OpensThePageOfAKnownDigestAtOnceInLowerCase) {
  LookUpWindow window;
  window.algorithms.Select(Sha256);
  window.Finish();
  window.options.uppercase = true;
  window.commands.Run(IDC_VIRUSTOTAL);
  EXPECT_EQ(window.desktop.openedAddresses, std::vector{PageOfFake()});
  EXPECT_TRUE(window.queue.jobs.empty());
}

TEST(LookUpTest, WaitsForTheDigest) {
  LookUpWindow window;
  window.commands.Run(ID_CTX_VIRUSTOTAL);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].mask, Sha256);
  EXPECT_EQ(window.rows[0].status, RowStatus::Waiting);
  EXPECT_TRUE(window.desktop.openedAddresses.empty());
  window.Finish();
  EXPECT_EQ(window.desktop.openedAddresses, std::vector{PageOfFake()});
  EXPECT_FALSE(window.lookUp.IsWaiting());
}

TEST(LookUpTest, OnlyOneReadableRowCanBeLookedUp) {
  LookUpWindow window;
  window.AddRow(u"b");
  for (const std::vector<size_t>& selected : {std::vector<size_t>{}, std::vector<size_t>{0, 1}}) {
    window.view.selected = selected;
    window.commands.Run(IDC_VIRUSTOTAL);
  }
  window.RowAt(1).status = RowStatus::Failed;
  window.view.selected = {1};
  window.commands.Run(IDC_VIRUSTOTAL);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_FALSE(window.lookUp.IsWaiting());
}

TEST(LookUpTest, AnotherRowsResultDoesNotOpenThePage) {
  LookUpWindow window;
  window.commands.Run(IDC_VIRUSTOTAL);
  Row& other = window.AddRow(u"b");
  window.hashing.QueueRow(other.id, Sha256);
  std::swap(window.queue.jobs[0], window.queue.jobs[1]);
  window.Finish();
  EXPECT_TRUE(window.lookUp.IsWaiting());
  EXPECT_TRUE(window.desktop.openedAddresses.empty());
  window.Finish();
  EXPECT_EQ(window.desktop.openedAddresses.size(), 1u);
}

TEST(LookUpTest, AFailureEndsIt) {
  LookUpWindow window;
  window.commands.Run(IDC_VIRUSTOTAL);
  window.Finish({.error = 5});
  EXPECT_FALSE(window.lookUp.IsWaiting());
  EXPECT_TRUE(window.desktop.openedAddresses.empty());
}

TEST(LookUpTest, CancelDoesNotEndIt) {
  LookUpWindow window;
  window.commands.Run(IDC_VIRUSTOTAL);
  window.edits.CancelAll();
  EXPECT_TRUE(window.lookUp.IsWaiting());
  window.algorithms.Select(Sha256);
  window.Finish();
  EXPECT_EQ(window.desktop.openedAddresses, std::vector{PageOfFake()});
}

TEST(LookUpTest, ClearListEndsIt) {
  LookUpWindow window;
  window.commands.Run(IDC_VIRUSTOTAL);
  window.edits.Clear();
  EXPECT_FALSE(window.lookUp.IsWaiting());
}

TEST(OpenFolderTest, ShowsTheFileWhateverItsStatus) {
  LookUpWindow window;
  window.RemoveRows({0});
  window.AddRow(u"C:\\d\\a");
  window.view.selected = {0};
  window.RowAt(0).status = RowStatus::Failed;
  window.commands.Run(IDC_OPEN_FOLDER);
  window.commands.Run(ID_CTX_OPEN_FOLDER);
  const std::pair<std::u16string, std::u16string> shown(u"C:\\d\\a", u"C:\\d");
  EXPECT_EQ(window.desktop.shownInFolder, (std::vector{shown, shown}));
  window.view.selected = {};
  window.commands.Run(IDC_OPEN_FOLDER);
  EXPECT_EQ(window.desktop.shownInFolder.size(), 2u);
}

TEST(WebPagesTest, OpenInTheBrowser) {
  FakeWindow window;
  window.commands.Run(ID_HELP_ONLINE);
  window.commands.Run(ID_WEBSITE);
  EXPECT_EQ(
      window.desktop.openedAddresses,
      (std::vector<std::u16string>{u"https://sumwright.example/", u"https://zendrik.example/"}));
}

TEST(HashTextTest, PassesOnSelectionAndCase) {
  FakeWindow window;
  window.algorithms.Select(Sha256);
  window.options.uppercase = true;
  window.commands.Run(ID_HASH_TEXT);
  EXPECT_EQ(window.desktop.hashTexts, (std::vector{std::pair{Sha256, true}}));
}

}  // namespace
}  // namespace app::testing
