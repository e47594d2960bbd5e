// What the program opens in the browser, which the test program stands in for, and in the file
// manager.
#include <gtest/gtest.h>

#include <string>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

class ShellCallsTest : public ::testing::Test {
 protected:
  static void ExpectAddress(const std::u16string& address) {
    EXPECT_TRUE(WaitFor([&] { return OpenedAddress() == address; }))
        << ::testing::PrintToString(OpenedAddress());
  }
};

TEST_F(ShellCallsTest, HelpAndWebsiteOpenTheirPages) {
  if (!BecomeTheBrowser()) GTEST_SKIP() << NotTheBrowser;
  const RunningWindow window;
  window.Command(ID_HELP_ONLINE);
  ExpectAddress(u"https://sumwright.example/");
  window.Command(ID_WEBSITE);
  ExpectAddress(u"https://zendrik.example/");
  constexpr int f1Key = 0x70;
  window.TypeChord({f1Key});
  ExpectAddress(u"https://sumwright.example/");
}

TEST_F(ShellCallsTest, OnlyTheDigestGoesToVirusTotal) {
  if (!BecomeTheBrowser()) GTEST_SKIP() << NotTheBrowser;
  TempTree tree;
  const RunningWindow window;
  window.Click(IDC_ALGO_SHA256);
  window.Command(ID_UPPERCASE);
  window.Drop({tree.AddFile(u"abc.bin", DigestsOfAbc.input)});
  window.WaitUntilIdle();
  ASSERT_EQ(window.Text(IDC_DETAILS).find(u"SHA-256"), std::u16string::npos);
  window.Click(IDC_VIRUSTOTAL);
  ExpectAddress(u"https://www.virustotal.com/gui/file/" + std::u16string(DigestsOfAbc.sha256));
}

TEST_F(ShellCallsTest, OpenFolderShowsTheFolderOfTheFile) {
  TempTree tree;
  const RunningWindow window;
  window.Drop({tree.AddFile(u"here it is/abc.bin", DigestsOfAbc.input)});
  window.Click(IDC_OPEN_FOLDER);
  EXPECT_TRUE(WaitFor([] { return CloseFolderWindow(u"here it is"); }));
}

}  // namespace
}  // namespace app::testing
