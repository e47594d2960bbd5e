// Paths that Windows treats specially: very long ones, junctions, alternate streams, pipes and
// devices.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/support/folder_link_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

bool IsFailure(const std::u16string& status) {
  return !status.empty() && !status.starts_with(u"Done") && status != u"Waiting" &&
         status != u"Hashing" && status != u"Cancelled";
}

TEST(LongPathTest, AFileBeyondTheSystemsOwnLimitIsHashed) {
  TempTree tree;
  const std::u16string path = AddFileWithLongPath(tree, 400, DigestsOfAbc.input);
  if (GetFileAttributesW(AsWide(path)) != INVALID_FILE_ATTRIBUTES) {
    GTEST_SKIP() << "paths have no length limit here";
  }
  const RunningWindow window;
  window.Drop({path});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Status"), Texts{u"Done"});
  EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
  window.Command(ID_CLEAR_LIST);
  window.Drop({tree.Root()});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256) << "found by walking";
}

TEST(JunctionTest, AJunctionToItsOwnParentEndsTheWalk) {
  TempTree tree;
  tree.AddFile(u"d/file", DigestsOfAbc.input);
  const swr::testing::FolderLink junction(tree.Path(u"d/back"), tree.Path(u"d"));
  if (!junction.IsThere()) GTEST_SKIP() << "no link to a folder can be created here";
  const RunningWindow window;
  window.Drop({tree.Path(u"d")});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"), Texts{u"file"});
}

class StreamsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = tree_.AddFile(u"setup.txt", DigestsOfAbc.input);
    swr::testing::WriteBytes(path_ + u":note", DigestsOfDigits.input);
    if (GetFileAttributesW(AsWide(path_ + u":note")) == INVALID_FILE_ATTRIBUTES) {
      GTEST_SKIP() << "this file system has no streams";
    }
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW(AsWide(tree_.Root() + u"\\*note"), &data);
    if (search != INVALID_HANDLE_VALUE) {
      FindClose(search);
      GTEST_SKIP() << "a stream is a separate file here";
    }
  }

  TempTree tree_;
  std::u16string path_;
};

TEST_F(StreamsTest, AFolderListsNoStreams) {
  const RunningWindow window;
  window.Drop({tree_.Root()});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"), Texts{u"setup.txt"});
  EXPECT_EQ(window.Cell(0, u"MD5"), DigestsOfAbc.md5);
}

TEST_F(StreamsTest, TheOriginOfADownloadIsReadFromItsStream) {
  swr::testing::WriteBytes(path_ + u":Zone.Identifier",
                           "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=https://example.com/a\r\n");
  const RunningWindow window;
  window.Drop({path_});
  window.WaitUntilIdle();
  EXPECT_TRUE(WaitFor([&] {
    return window.Text(IDC_DETAILS).find(u"Downloaded from:\thttps://example.com/a") !=
           std::u16string::npos;
  })) << swr::WideToUtf8(window.Text(IDC_DETAILS));
}

class DevicesTest : public ::testing::Test {
 protected:
  DevicesTest() {
    // Each time the pipe is opened, one of its instances is used up.
    for (int i = 0; i < 8; ++i) {
      ends_.push_back(
          CreateNamedPipeW(AsWide(Pipe), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 10, 0, 0, 0, nullptr));
    }
  }
  ~DevicesTest() override {
    for (const HANDLE end : ends_) CloseHandle(end);
  }

  static constexpr char16_t Pipe[] = u"\\\\.\\pipe\\SumwrightKit";
  std::vector<HANDLE> ends_;
  TempTree tree_;
};

TEST_F(DevicesTest, AreRejectedWhenDropped) {
  const std::u16string last = tree_.AddFile(u"last", DigestsOfAbc.input);
  const RunningWindow window;
  window.Drop({Pipe, u"CON", u"nul", last});
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  ASSERT_EQ(statuses.size(), 4u);
  for (size_t row = 0; row < 3; ++row) {
    EXPECT_TRUE(IsFailure(statuses[row])) << row << " " << swr::WideToUtf8(statuses[row]);
  }
  EXPECT_EQ(statuses[3], u"Done");
}

TEST_F(DevicesTest, AreRejectedWhenAChecksumFileListsThem) {
  tree_.AddFile(u"last", DigestsOfAbc.input);
  const std::string digest = swr::WideToUtf8(DigestsOfAbc.sha256) + "  ";
  const std::u16string list =
      tree_.AddFile(u"list.sha256",
                    digest + "\\\\.\\pipe\\SumwrightKit\n" + digest + "CON\n" + digest + "last\n");
  const RunningWindow window;
  window.Drop({list});
  window.FollowBannerLink(u"a");
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == 3; }));
  window.WaitUntilIdle();
  const Texts statuses = window.Column(u"Status");
  for (size_t row = 0; row < 2; ++row) {
    EXPECT_TRUE(IsFailure(statuses[row]) && !statuses[row].starts_with(u"OK"))
        << row << " " << swr::WideToUtf8(statuses[row]);
  }
  EXPECT_EQ(statuses[2], u"OK (SHA-256)");
}

}  // namespace
}  // namespace app::testing
