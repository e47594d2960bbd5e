// The entries in Explorer's menu and in the Send To menu, in the real registry and as a real link,
// with copies of the program that are added, moved and removed.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/shell_state_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

constexpr char16_t FileEntry[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright";
constexpr char16_t FolderEntry[] = u"Software\\Classes\\Directory\\shell\\ZendrikSumwright";
constexpr int OptionsMenu = 2;

std::optional<std::u16string> EntryCommand(const std::u16string& entry) {
  return RegistryText(HKEY_CURRENT_USER, entry + u"\\command", u"");
}

class ShellEntriesTest : public ::testing::Test {
 protected:
  ShellEntriesTest() { RemoveEntries(); }
  ~ShellEntriesTest() override { RemoveEntries(); }

  static void RemoveEntries() {
    for (const HKEY hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
      DeleteRegistryKey(hive, FileEntry);
      DeleteRegistryKey(hive, FolderEntry);
    }
    DeleteFileW(swr::AsWide(SendToLinkPath()));
  }

  static bool CanWriteForAllUsers() {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, swr::AsWide(u"Software\\Classes"), 0,
                                         KEY_CREATE_SUB_KEY, &key);
    if (status == ERROR_SUCCESS) RegCloseKey(key);
    return status == ERROR_SUCCESS;
  }

  // A copy of the program in a folder of its own.
  std::u16string CopyTo(const std::u16string& folder) {
    const std::u16string copy = tree_.AddFolder(folder) + u"\\Sumwright.exe";
    EXPECT_TRUE(CopyFileW(swr::AsWide(ProgramUnderTest()), swr::AsWide(copy), FALSE));
    return copy;
  }

  static MenuItem Option(const RunningWindow& window, uint32_t id) {
    const std::vector<MenuItem> items = window.Menu(OptionsMenu);
    const auto found = std::ranges::find(items, id, &MenuItem::id);
    return found == items.end() ? MenuItem{} : *found;
  }

  static void AddExplorerEntry(const RunningWindow& window) {
    window.PostCommand(ID_EXPLORER_MENU);
    const ProgramDialog message(window, u"Sumwright");
    EXPECT_EQ(message.Instruction(),
              u"\"Calculate checksums\" is now in the Explorer menu of files and folders.");
    EXPECT_EQ(message.Content(),
              u"On Windows 11 it's under \"Show more options\". It points at this copy of the "
              u"program. If you move the program, Sumwright offers to update the entry.");
    message.Press(IDOK);
  }

  static void ExpectExplorerEntry(const std::u16string& program) {
    for (const std::u16string entry : {FileEntry, FolderEntry}) {
      EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, entry, u""), u"Calculate checksums");
      EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, entry, u"Icon"), u"\"" + program + u"\",0");
      EXPECT_EQ(EntryCommand(entry), u"\"" + program + u"\" \"%1\"");
    }
  }

  static void ExpectNoExplorerEntry() {
    for (const std::u16string entry : {FileEntry, FolderEntry}) {
      EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, entry, u""), std::nullopt);
      EXPECT_EQ(EntryCommand(entry), std::nullopt);
    }
  }

  static void ExpectSendToLink(const std::u16string& program) {
    EXPECT_TRUE(ReadSendToLink() ==
                (LinkContent{program, u"Calculate checksums with Sumwright", program, 0}));
  }

  static constexpr char16_t StaleText[] =
      u"The Explorer menu entries point at a copy of Sumwright that no longer exists.  "
      u"<a id=\"a\">Use this copy</a>    <a id=\"r\">Remove them</a>    <a id=\"x\">Dismiss</a>";

  // A copy with both entries that was moved afterwards.
  std::u16string MovedCopy() {
    const std::u16string old = CopyTo(u"old place");
    {
      RunningWindow window({.program = old});
      AddExplorerEntry(window);
      window.Command(ID_SEND_TO);
      EXPECT_EQ(window.Close(), 0);
    }
    EXPECT_TRUE(
        MoveFileW(swr::AsWide(tree_.Path(u"old place")), swr::AsWide(tree_.Path(u"new place"))));
    return tree_.Path(u"new place/Sumwright.exe");
  }

  TempTree tree_;
};

TEST_F(ShellEntriesTest, TheExplorerEntryIsAddedAndRemoved) {
  const RunningWindow window;
  EXPECT_FALSE(Option(window, ID_EXPLORER_MENU).isChecked);
  AddExplorerEntry(window);
  ExpectExplorerEntry(ProgramUnderTest());
  EXPECT_TRUE(Option(window, ID_EXPLORER_MENU).isChecked);
  EXPECT_TRUE(Option(window, ID_EXPLORER_MENU).isEnabled);
  window.Command(ID_EXPLORER_MENU);
  ExpectNoExplorerEntry();
  EXPECT_FALSE(Option(window, ID_EXPLORER_MENU).isChecked);
  EXPECT_TRUE(window.TakesInput()) << "no dialog is open";
}

TEST_F(ShellEntriesTest, TheSendToLinkIsAddedAndRemoved) {
  const RunningWindow window;
  window.Command(ID_SEND_TO);
  ExpectSendToLink(ProgramUnderTest());
  EXPECT_TRUE(Option(window, ID_SEND_TO).isChecked);
  window.Command(ID_SEND_TO);
  EXPECT_EQ(ReadSendToLink(), std::nullopt);
  EXPECT_FALSE(Option(window, ID_SEND_TO).isChecked);
  EXPECT_TRUE(window.TakesInput()) << "no dialog is open";
}

TEST_F(ShellEntriesTest, AnEntryOfAnotherCopyIsNotCheckedAndCanBeReplaced) {
  const std::u16string one = CopyTo(u"one");
  const std::u16string two = CopyTo(u"two");
  {
    RunningWindow window({.program = one});
    AddExplorerEntry(window);
    window.Command(ID_SEND_TO);
    EXPECT_EQ(window.Close(), 0);
  }
  const RunningWindow window({.program = two});
  EXPECT_FALSE(Option(window, ID_EXPLORER_MENU).isChecked);
  EXPECT_FALSE(Option(window, ID_SEND_TO).isChecked);
  EXPECT_FALSE(window.IsShown(IDC_BANNER)) << "the other copy exists";
  AddExplorerEntry(window);
  window.Command(ID_SEND_TO);
  ExpectExplorerEntry(two);
  ExpectSendToLink(two);
}

TEST_F(ShellEntriesTest, AnotherProgramInTheSameFolderIsTheSameCopy) {
  const std::u16string program = CopyTo(u"both");
  const std::u16string other = tree_.Path(u"both/Sumwright-x86.exe");
  ASSERT_TRUE(CopyFileW(swr::AsWide(program), swr::AsWide(other), FALSE));
  {
    RunningWindow window({.program = other});
    AddExplorerEntry(window);
    EXPECT_EQ(window.Close(), 0);
  }
  const RunningWindow window({.program = program});
  EXPECT_TRUE(Option(window, ID_EXPLORER_MENU).isChecked);
}

TEST_F(ShellEntriesTest, AnEntryForAllUsersCantBeChangedHere) {
  if (!CanWriteForAllUsers())
    GTEST_SKIP() << "only an administrator can make entries for all users";
  SetRegistryText(HKEY_LOCAL_MACHINE, std::u16string(FileEntry) + u"\\command", u"",
                  u"\"C:\\Sumwright.exe\" \"%1\"");
  const RunningWindow window;
  EXPECT_TRUE(Option(window, ID_EXPLORER_MENU).isChecked);
  EXPECT_FALSE(Option(window, ID_EXPLORER_MENU).isEnabled);
  EXPECT_FALSE(window.IsShown(IDC_BANNER));
}

TEST_F(ShellEntriesTest, AProgramThatHasMovedRepairsItsEntriesWithOneClick) {
  const std::u16string moved = MovedCopy();
  const RunningWindow window({.program = moved});
  ASSERT_TRUE(window.IsShown(IDC_BANNER));
  EXPECT_EQ(window.Text(IDC_BANNER), StaleText);
  EXPECT_FALSE(Option(window, ID_EXPLORER_MENU).isChecked);
  window.FollowBannerLink(AcceptLink);
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_BANNER); }));
  window.Ping();
  ExpectExplorerEntry(moved);
  ExpectSendToLink(moved);
}

TEST_F(ShellEntriesTest, RemoveThemRemovesTheEntries) {
  const RunningWindow window({.program = MovedCopy()});
  ASSERT_TRUE(window.IsShown(IDC_BANNER));
  window.FollowBannerLink(RejectLink);
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_BANNER); }));
  window.Ping();
  ExpectNoExplorerEntry();
  EXPECT_EQ(ReadSendToLink(), std::nullopt);
}

TEST_F(ShellEntriesTest, DismissKeepsTheEntries) {
  const RunningWindow window({.program = MovedCopy()});
  ASSERT_TRUE(window.IsShown(IDC_BANNER));
  window.FollowBannerLink(DismissLink);
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_BANNER); }));
  window.Ping();
  ExpectExplorerEntry(tree_.Path(u"old place/Sumwright.exe"));
}

TEST_F(ShellEntriesTest, ALinkThatCantBeReadIsOfferedForRepair) {
  swr::testing::WriteBytes(SendToLinkPath(), "rubbish");
  const RunningWindow window;
  ASSERT_TRUE(window.IsShown(IDC_BANNER));
  window.FollowBannerLink(AcceptLink);
  EXPECT_TRUE(WaitFor([&] { return !window.IsShown(IDC_BANNER); }));
  window.Ping();
  ExpectSendToLink(ProgramUnderTest());
  ExpectNoExplorerEntry();
}

// A folder has the link's name.
TEST_F(ShellEntriesTest, ALinkThatCantBeWrittenIsReported) {
  ASSERT_TRUE(CreateDirectoryW(swr::AsWide(SendToLinkPath()), nullptr));
  const RunningWindow window;
  window.PostCommand(ID_SEND_TO);
  const ProgramDialog message(window, u"Sumwright");
  EXPECT_EQ(message.Instruction(), u"The Explorer menu couldn't be changed.");
  message.Press(IDOK);
  EXPECT_FALSE(Option(window, ID_SEND_TO).isChecked);
  EXPECT_TRUE(RemoveDirectoryW(swr::AsWide(SendToLinkPath())));
}

}  // namespace
}  // namespace app::testing
