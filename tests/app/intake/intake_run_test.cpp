#include "app/intake/intake_run.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;

struct IntakeRunTest : ::testing::Test {
  IntakeEnd Run(const IntakeRequest& request) {
    return RunIntake(request, cancel,
                     {.announced =
                          [&](std::u16string path) {
                            EXPECT_TRUE(files.empty());
                            announced.push_back(std::move(path));
                            return announced.size() != refuseAfter;
                          },
                      .found =
                          [&](IntakeFile&& file) {
                            files.push_back(std::move(file));
                            if (files.size() == cancelAfter) cancel = true;
                            return files.size() != refuseAfter;
                          }});
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const IntakeFile& file : files) {
      names.push_back(swr::WideToUtf8(file.row.Path().substr(tree.Root().size() + 1)));
    }
    return names;
  }

  TempTree tree;
  std::atomic<bool> cancel = false;
  size_t cancelAfter = SIZE_MAX;
  size_t refuseAfter = SIZE_MAX;
  std::vector<std::u16string> announced;
  std::vector<IntakeFile> files;
};

TEST_F(IntakeRunTest, FilesMayRepeatIfTheirFullOrWalkedPathCameBefore) {
  const std::u16string a = tree.AddFile(u"a");
  std::u16string upper = tree.Path(u"A");
  const std::u16string b = tree.AddFile(u"folder/b");
  tree.AddFile(u"folder/c");
  Run(PathsRequest{.paths = {a, upper, a, tree.Path(u"folder"), tree.Path(u"./folder"), b}});
  std::vector<bool> repeats;
  for (const IntakeFile& file : files) repeats.push_back(file.mayRepeat);
  EXPECT_EQ(repeats, (std::vector<bool>{false, true, true, false, false, true, true, true}));
}

TEST_F(IntakeRunTest, ListedFilesMayRepeatIfAnEarlierLineNamesThem) {
  const std::string digest(64, '1');
  std::string text;
  for (const char* name : {"a", "b", "./a", "c", "B"}) text += digest + "  " + name + "\n";
  const std::u16string list = tree.AddFile(u"list.sha256", text);
  for (const bool announce : {false, true}) {
    files.clear();
    announced.clear();
    Run(ChecksumFileRequest{.path = list, .announcePaths = announce});
    std::vector<bool> repeats;
    for (const IntakeFile& file : files) repeats.push_back(file.mayRepeat);
    EXPECT_EQ(repeats, (std::vector<bool>{false, false, true, false, true}));
  }
}

TEST_F(IntakeRunTest, LooksUpTheFirstListedFileBeforeAllLinesAreRead) {
  constexpr uint32_t lines = 20;
  std::string text;
  for (uint32_t i = 0; i < lines; ++i) text += std::string(64, '1') + "  name\n";
  const std::u16string list = tree.AddFile(u"list.sha256", text);
  for (const bool announce : {false, true}) {
    files.clear();
    announced.clear();
    uint32_t fullPathCalls = 0;  // one for each line, and one for each file that is looked up
    const InstalledFaults faults(
        {{.call = SystemCall::FullPath, .nth = 0, .before = [&] { ++fullPathCalls; }},
         {.call = SystemCall::PathInfo,
          .before = [&] { EXPECT_EQ(fullPathCalls >= lines, announce); }}});
    Run(ChecksumFileRequest{.path = list, .announcePaths = announce});
    EXPECT_EQ(files.size(), lines);
  }
}

TEST_F(IntakeRunTest, ReportsFilesAndFoldersInTheOrderGiven) {
  const std::u16string single = tree.AddFile(u"z.bin", "four");
  tree.AddFile(u"folder/b10.bin");
  tree.AddFile(u"folder/b9.bin", "nine bytes");
  const IntakeEnd end = Run(PathsRequest{.paths = {single, tree.Path(u"folder")}});
  EXPECT_FALSE(end.cancelled);
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[0].row.Path(), single);
  EXPECT_EQ(files[0].row.size, 4u);
  EXPECT_EQ(files[0].row.modified, swr::testing::ModifiedTime(single));
  EXPECT_FALSE(files[0].isWalked);
  EXPECT_EQ(files[1].row.Path(), tree.Path(u"folder/b9.bin"));
  EXPECT_EQ(files[1].row.size, 10u);
  EXPECT_TRUE(files[1].isWalked);
  EXPECT_EQ(files[1].walkedPath, u"") << "it is the same";
  EXPECT_EQ(files[2].row.Path(), tree.Path(u"folder/b10.bin"));
}

TEST_F(IntakeRunTest, ReportsUnreadablePathsAsFailed) {
  Run(PathsRequest{.paths = {tree.Path(u"absent"), u""}});
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].row.status, RowStatus::Failed);
  EXPECT_EQ(files[0].row.error, swr::ErrorFileNotFound);
  EXPECT_EQ(files[1].row.status, RowStatus::Failed);
  EXPECT_EQ(files[1].row.Path(), u"");
}

TEST_F(IntakeRunTest, AFailedFileInAFolderIsStillReported) {
  tree.AddFile(u"folder/a.bin");
  // The first call is that of IsDirectoryPath.
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .nth = 2, .code = swr::ErrorNetworkNameGone}});
  Run(PathsRequest{.paths = {tree.Path(u"folder")}});
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].row.status, RowStatus::Failed);
  EXPECT_EQ(files[0].row.error, swr::ErrorNetworkNameGone);
}

TEST_F(IntakeRunTest, ReadsTheLinesOfAChecksumFile) {
  tree.AddFile(u"a.bin", "abc");
  const std::u16string list =
      tree.AddFile(u"list.sha256", "# comment\n" + std::string(64, '1') + "  a.bin\nrubbish\n" +
                                       std::string(64, '2') + "  absent.bin\n");
  const IntakeEnd end = Run(ChecksumFileRequest{list});
  EXPECT_FALSE(end.readError);
  EXPECT_EQ(end.skippedLines, std::vector<uint32_t>{3});
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].row.Path(), tree.Path(u"a.bin"));
  EXPECT_EQ(files[0].row.size, 3u);
  ASSERT_TRUE(files[0].row.hasExpected);
  EXPECT_EQ(files[0].row.extras->expectedBytes, std::vector<uint8_t>(32, 0x11));
  EXPECT_EQ(files[0].row.extras->expectedAlgos.front(), swr::AlgoId::Sha256);
  EXPECT_EQ(files[0].row.extras->checksumLine, 2u);
  EXPECT_EQ(files[1].row.status, RowStatus::Failed);
  EXPECT_EQ(files[1].row.error, swr::ErrorFileNotFound);
  EXPECT_EQ(files[1].row.extras->checksumLine, 4u);
}

TEST_F(IntakeRunTest, AnnouncesListedPathsBeforeTheFirstFileWhenAsked) {
  const std::u16string list = tree.AddFile(
      u"list.sha256", std::string(64, '1') + "  a\n" + std::string(64, '1') + "  sub/../b\n");
  Run(ChecksumFileRequest{list});
  EXPECT_TRUE(announced.empty());
  files.clear();
  Run(ChecksumFileRequest{list, true});
  EXPECT_EQ(announced, (std::vector{tree.Path(u"a"), tree.Path(u"b")}));
  EXPECT_EQ(files.size(), 2u);
}

TEST_F(IntakeRunTest, ReportsWhyAChecksumFileCannotBeRead) {
  const IntakeEnd end = Run(ChecksumFileRequest{tree.Path(u"absent.sha256")});
  EXPECT_EQ(end.readError, swr::ErrorFileNotFound);
  EXPECT_TRUE(files.empty());
}

TEST_F(IntakeRunTest, ACancelStopsAWalk) {
  tree.AddFile(u"folder/a.bin");
  tree.AddFile(u"folder/b.bin");
  tree.AddFile(u"folder/c/d.bin");
  const std::u16string later = tree.AddFile(u"later.bin");
  cancelAfter = 2;
  const IntakeEnd end = Run(PathsRequest{.paths = {tree.Path(u"folder"), later}});
  EXPECT_TRUE(end.cancelled);
  EXPECT_EQ(Names().size(), 2u);
}

// A verdict about the list must include every line: files that were not looked up are "not
// checked".
TEST_F(IntakeRunTest, ACancelStillReportsEveryLineOfAChecksumFile) {
  std::string text;
  for (const char name : {'a', 'b', 'c', 'd'}) {
    tree.AddFile(std::u16string(1, static_cast<char16_t>(name)));
    text += std::string(64, '1') + "  " + name + "\n";
  }
  const std::u16string list = tree.AddFile(u"list.sha256", text);
  cancelAfter = 2;
  const InstalledFaults calls;
  const IntakeEnd end = Run(ChecksumFileRequest{list});
  EXPECT_TRUE(end.cancelled);
  ASSERT_EQ(files.size(), 4u);
  EXPECT_EQ(files[1].row.status, RowStatus::Waiting);
  EXPECT_EQ(files[2].row.status, RowStatus::Cancelled);
  EXPECT_TRUE(files[2].row.cancelledByUser);
  EXPECT_EQ(calls.Count(SystemCall::PathInfo), 2u);
}

TEST_F(IntakeRunTest, ARequestCancelledBeforeItBeginsMakesNoCalls) {
  const std::u16string list = tree.AddFile(u"list.sha256", std::string(64, '1') + "  a\n");
  cancel = true;
  const InstalledFaults calls;
  EXPECT_TRUE(Run(ChecksumFileRequest{list}).cancelled);
  EXPECT_TRUE(Run(PathsRequest{.paths = {list}}).cancelled);
  EXPECT_TRUE(files.empty());
  EXPECT_EQ(calls.Count(SystemCall::OpenFile), 0u);
  EXPECT_EQ(calls.Count(SystemCall::PathInfo), 0u);
}

TEST_F(IntakeRunTest, EndsWhenNoMoreFilesAreWanted) {
  const std::u16string list =
      tree.AddFile(u"list.sha256", std::string(64, '1') + "  a\n" + std::string(64, '1') + "  b\n");
  refuseAfter = 1;
  Run(ChecksumFileRequest{list});
  EXPECT_EQ(files.size(), 1u);
  files.clear();
  Run(PathsRequest{.paths = {list, list}});
  EXPECT_EQ(files.size(), 1u);
}

}  // namespace
}  // namespace app::testing
