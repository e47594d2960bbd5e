// The real window while system calls that hardly ever fail are made to fail.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/replaced_import_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

// No message that the program posts to itself arrives, so results cannot be announced.
TEST(FailingCallsTest, ResultsArriveWithoutAnnouncements) {
  TempTree tree;
  tree.AddFile(u"abc.bin", DigestsOfAbc.input);
  const std::u16string list =
      tree.AddFile(u"SHA256SUMS", swr::WideToUtf8(DigestsOfAbc.sha256) + "  abc.bin\n");
  RunningWindow window;
  const ReplacedImport fault(window.Handle(), "PostMessageW", PostsNothing());
  window.Drop({list});
  window.FollowBannerLink(AcceptLink);
  EXPECT_TRUE(WaitFor([&] { return window.Text(IDC_RESULT) == u"The file is OK."; },
                      std::chrono::seconds(10)))
      << ::testing::PrintToString(window.Text(IDC_RESULT));
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_CANCEL); }));
}

// While a message box is open, the window keeps handling results.
TEST(FailingCallsTest, ResultsArriveWhileAMessageIsOpen) {
  TempTree tree;
  RunningWindow window;
  window.Drop(
      {tree.AddFile(u"a.bin", DigestsOfAbc.input), tree.AddFile(u"b.bin", DigestsOfAbc.input)});
  window.WaitUntilIdle();
  // Both files wait for SHA-256, whose results open the message box.
  window.Click(IDC_ALGO_SHA256);
  window.Command(ID_CLEAR_LIST);
  window.Drop({tree.Path(u"a.bin"), tree.Path(u"b.bin")});
  window.WaitUntilIdle();
  window.SelectOnly({0, 1});
  window.OpenListMenu();
  window.ChooseFromMenu(ID_CTX_COMPARE);
  const ProgramDialog message(window, u"Sumwright");
  window.Drop({tree.AddFile(u"c.bin", DigestsOfAbc.input)});
  window.WaitUntilIdle();
  EXPECT_EQ(window.Cell(2, u"Status"), u"Done");
  message.Press(IDOK);
}

// The system reports a negative length for the text in the box.
TEST(FailingCallsTest, AnExceptionInAMessageEndsTheProgram) {
  RunningWindow window;
  const ReplacedImport fault(window.Handle(), "GetWindowTextLengthW", ReturnsANegativeNumber());
  // Delivered through stack frames of the system, without waiting for an answer.
  SendNotifyMessageW(window.Handle(), WM_COMMAND, IDC_CANCEL, 0);
  constexpr uint32_t failFastException = 0xC0000602;
  EXPECT_EQ(static_cast<uint32_t>(window.WaitForEnd()), failFastException);
}

}  // namespace
}  // namespace app::testing
