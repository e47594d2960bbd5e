// The About dialog and the dialog about the command-line tool. InstalledCopyTest tests a copy that
// the setup has installed.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"
#include "version.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

constexpr int HelpMenu = 3;

std::u16string FolderOf(const std::u16string& path) { return path.substr(0, path.rfind(u'\\')); }

std::u16string AboutText(const std::u16string& location) {
  return u"Copyright \u00A9 2026 the Sumwright authors\nFreeware from Zendrik.\n\n" + location +
         u"\n\n<a href=\"https://sumwright.example/\">https://sumwright.example/</a>\n"
         u"<a href=\"mailto:support@sumwright.example\">support@sumwright.example</a>";
}

void ExpectAddress(const std::u16string& address) {
  EXPECT_TRUE(WaitFor([&] { return OpenedAddress() == address; }))
      << ::testing::PrintToString(OpenedAddress());
}

std::u16string ProgramFolderCommand(const RunningWindow& window) {
  const std::vector<MenuItem> items = window.Menu(HelpMenu);
  return std::ranges::find(items, uint32_t{ID_PROGRAM_FOLDER}, &MenuItem::id)->text;
}

TEST(AboutTest, ShowsTheFolderOfAPortableCopy) {
  const RunningWindow window;
  EXPECT_EQ(ProgramFolderCommand(window), u"Get the &Setup (Explorer Menu, Start Menu)...");
  window.PostCommand(ID_ABOUT);
  const ProgramDialog about(window, u"About Sumwright");
  EXPECT_EQ(about.Instruction(), u"Sumwright " SUMWRIGHT_VERSION);
  EXPECT_EQ(about.Content(), AboutText(u"Portable copy in " + FolderOf(ProgramUnderTest())));
  EXPECT_EQ(about.Footer(),
            u"XXH64, XXH3 and XXH128 come from xxHash (BSD 2-Clause licence), BLAKE3 from the "
            u"BLAKE3 reference library (CC0 1.0 or Apache 2.0 licence). CRC32, SHA-3 and the icons "
            u"are Sumwright's own (MIT licence). The other algorithms come from Windows.");
  about.Press(IDOK);
}

TEST(AboutTest, ItsLinksOpenTheirPages) {
  if (!BecomeTheBrowser()) GTEST_SKIP() << NotTheBrowser;
  const RunningWindow window;
  window.FollowLink(IDC_LINKS, AboutLink);
  const ProgramDialog about(window, u"About Sumwright");
  about.FollowLink(u"https://sumwright.example/");
  ExpectAddress(u"https://sumwright.example/");
  about.FollowLink(u"mailto:support@sumwright.example");
  ExpectAddress(u"mailto:support@sumwright.example");
  about.Press(IDOK);
  window.Command(ID_PROGRAM_FOLDER);
  ExpectAddress(u"https://sumwright.example/");
}

// The program with or without the tool in its folder. The test program itself stands in for the
// tool.
class CommandLineToolTest : public ::testing::Test {
 protected:
  CommandLineToolTest() {
    program_ = tree_.AddFolder(u"program and tool") + u"\\Sumwright.exe";
    CopyFileW(swr::AsWide(ProgramUnderTest()), swr::AsWide(program_), FALSE);
  }

  void AddTool() {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::u16string tool = FolderOf(program_) + u"\\swrhash.exe";
    ASSERT_TRUE(CopyFileW(self, swr::AsWide(tool), FALSE));
  }

  const bool isTheBrowser_ = BecomeTheBrowser();
  TempTree tree_;
  std::u16string program_;
};

constexpr char16_t ToolText[] =
    u"swrhash calculates and verifies checksums in a command prompt, in scripts and in batch "
    u"files. Its checksum files also work with Linux sha256sum.\n\nswrhash setup.exe\nswrhash -a "
    u"md5,sha256 -r C:\\Downloads > checksums.txt\nswrhash -c SHA256SUMS\nswrhash --expect <hash> "
    u"setup.exe\n\nRun swrhash --help for all options.";

TEST_F(CommandLineToolTest, WithoutTheToolItsPageIsOffered) {
  const RunningWindow window({.program = program_});
  window.FollowLink(IDC_LINKS, CommandLineToolLink);
  const ProgramDialog dialog(window, u"Command-Line Tool");
  EXPECT_EQ(dialog.Instruction(), u"Command-line tool (swrhash)");
  EXPECT_EQ(dialog.Content(), ToolText);
  EXPECT_EQ(dialog.Footer(),
            u"swrhash comes with the setup and in sumwrite.zip (every build in one zip).");
  EXPECT_EQ(dialog.Control(100), nullptr);
  EXPECT_EQ(dialog.Control(101), nullptr);
  if (!isTheBrowser_) {
    dialog.Press(IDCLOSE);
    GTEST_SKIP() << NotTheBrowser;
  }
  dialog.Press(102);
  ExpectAddress(u"https://sumwright.example/");
}

TEST_F(CommandLineToolTest, ClosingTheDialogDoesNothing) {
  AddTool();
  const RunningWindow window({.program = program_});
  window.PostCommand(ID_CLI_TOOL);
  const ProgramDialog dialog(window, u"Command-Line Tool");
  EXPECT_EQ(dialog.Footer(),
            u"swrhash.exe runs on every Windows. swrhash64.exe and "
            u"swrhasharm64.exe are the faster native builds. Folder: " +
                FolderOf(program_));
  EXPECT_EQ(dialog.Control(102), nullptr);
  dialog.Press(IDCLOSE);
  const auto hasOpenedAnything = [&] {
    return !OpenedAddress().empty() || CloseFolderWindow(u"program and tool") ||
           !ProgramsStartedBy(window.ProcessId(), L"cmd.exe").empty();
  };
  EXPECT_FALSE(WaitFor(hasOpenedAnything, std::chrono::seconds(2)));
}

TEST_F(CommandLineToolTest, ItsFolderOpens) {
  AddTool();
  const RunningWindow window({.program = program_});
  window.PostCommand(ID_CLI_TOOL);
  const ProgramDialog dialog(window, u"Command-Line Tool");
  dialog.Press(101);
  EXPECT_TRUE(WaitFor([] { return CloseFolderWindow(u"program and tool"); }));
}

TEST_F(CommandLineToolTest, TheToolRunsInACommandPromptInItsFolder) {
  AddTool();
  const RunningWindow window({.program = program_});
  window.PostCommand(ID_CLI_TOOL);
  const ProgramDialog dialog(window, u"Command-Line Tool");
  dialog.Press(100);
  const std::wstring folder = swr::AsWide(FolderOf(program_));
  EXPECT_TRUE(WaitFor([&] { return RecordedToolRun() == folder + L"|--help"; }))
      << ::testing::PrintToString(RecordedToolRun());
  EndProgramsStartedBy(window.ProcessId(), L"cmd.exe");
}

TEST(InstalledCopyTest, AboutSaysThatItIsInstalled) {
  const RunningWindow window;
  EXPECT_EQ(ProgramFolderCommand(window), u"Open &Program Folder");
  window.PostCommand(ID_ABOUT);
  const ProgramDialog about(window, u"About Sumwright");
  EXPECT_EQ(about.Content(), AboutText(u"Installed in " + FolderOf(ProgramUnderTest())));
  about.Press(IDOK);
  window.Command(ID_PROGRAM_FOLDER);
  const std::u16string folder = FolderOf(ProgramUnderTest());
  EXPECT_TRUE(WaitFor([&] { return CloseFolderWindow(folder.substr(folder.rfind(u'\\') + 1)); }));
}

// The setup has installed the tool beside the program. A test of the package checks its output.
TEST(InstalledCopyTest, OffersTheToolThatWasInstalledWithIt) {
  const std::u16string folder = FolderOf(ProgramUnderTest());
  const std::u16string title = folder.substr(folder.rfind(u'\\') + 1);
  const RunningWindow window;
  window.PostCommand(ID_CLI_TOOL);
  {
    const ProgramDialog dialog(window, u"Command-Line Tool");
    EXPECT_EQ(dialog.Footer(),
              u"swrhash.exe runs on every Windows. swrhash64.exe and "
              u"swrhasharm64.exe are the faster native builds. Folder: " +
                  folder);
    EXPECT_EQ(dialog.Control(102), nullptr);
    dialog.Press(101);
  }
  EXPECT_TRUE(WaitFor([&] { return CloseFolderWindow(title); }));
  window.PostCommand(ID_CLI_TOOL);
  const ProgramDialog dialog(window, u"Command-Line Tool");
  dialog.Press(100);
  const uint32_t process = window.ProcessId();
  EXPECT_TRUE(WaitFor([&] { return ProgramsStartedBy(process, L"cmd.exe").size() == 1; }));
  EndProgramsStartedBy(process, L"cmd.exe");
}

TEST(InstalledCopyTest, HasTheEntriesThatItWouldWriteItself) {
  const RunningWindow window;
  const std::vector<MenuItem> options = window.Menu(2);
  EXPECT_TRUE(std::ranges::find(options, uint32_t{ID_EXPLORER_MENU}, &MenuItem::id)->isChecked);
  EXPECT_FALSE(window.IsShown(IDC_BANNER));
  window.Command(ID_SEND_TO);
}

}  // namespace
}  // namespace app::testing
