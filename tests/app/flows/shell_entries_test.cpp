#include <gtest/gtest.h>

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "version.h"

namespace app {
namespace {

using testing::FakeInstallSystem;
using testing::FakeWindow;
using Dialogs = std::vector<TaskDialogSpec>;

constexpr char16_t FileCommand[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright\\command";
constexpr char16_t Link[] = u"C:\\Users\\ann\\SendTo\\Sumwright.lnk";
constexpr char16_t GoneProgram[] = u"D:\\Gone\\Sumwright.exe";
constexpr char16_t StaleBanner[] =
    u"The Explorer menu entries point at a copy of Sumwright that no longer exists.  "
    u"<a id=\"a\">Use this copy</a>    <a id=\"r\">Remove them</a>    <a id=\"x\">Dismiss</a>";

const TaskDialogSpec NowInTheMenu = MessageDialog(
    TaskDialogIcon::Information,
    u"\"Calculate checksums\" is now in the Explorer menu of files and folders.",
    u"On Windows 11 it's under \"Show more options\". It points at this copy of the program. If "
    u"you move the program, Sumwright offers to update the entry.");
const TaskDialogSpec CouldNotBeChanged =
    MessageDialog(TaskDialogIcon::Error, u"The Explorer menu couldn't be changed.");

// A window that starts once the test has set up the system.
struct StartingWindow : testing::FakeParts, testing::WindowFlows {
  StartingWindow() : testing::WindowFlows(main) {}
  void Start() { main.Start(); }
  void MakeExplorerStale() {
    install.registry[FakeInstallSystem::User(FileCommand, u"")] = GoneProgram;
  }
  void MakeLinkStale() { install.links[Link] = GoneProgram; }
  ExplorerState Explorer() { return installation.GetExplorerState(); }
  SendToState SendTo() { return installation.GetSendToState(); }

  FakeInstallSystem& install = installSystem;
};

TEST(ShellEntriesTest, TheMenuShowsWhichEntriesStartThisCopy) {
  struct Row {
    std::optional<std::u16string> command;
    std::optional<std::u16string> machineCommand;
    std::optional<std::u16string> linkTarget;
    bool explorer;
    bool canChange;
    bool sendTo;
  };
  const std::u16string own = FakeInstallSystem().programPath;
  const std::vector<Row> rows = {
      {{}, {}, {}, false, true, false},
      {own, {}, {}, true, true, false},
      {{}, own, {}, true, false, false},
      {GoneProgram, own, {}, false, true, false},
      {GoneProgram, {}, GoneProgram, false, true, false},
      {{}, {}, own, false, true, true},
      {own, {}, own, true, true, true},
  };
  for (const Row& row : rows) {
    StartingWindow window;
    if (row.command) {
      window.install.registry[FakeInstallSystem::User(FileCommand, u"")] = *row.command;
    }
    if (row.machineCommand) {
      window.install.registry[{RegistryHive::LocalMachine, RegistryView::Own, FileCommand, u""}] =
          *row.machineCommand;
    }
    if (row.linkTarget) window.install.links[Link] = *row.linkTarget;
    window.Start();
    ASSERT_TRUE(window.view.options.shellEntries);
    EXPECT_EQ(window.view.options.shellEntries->explorerMenu, row.explorer);
    EXPECT_EQ(window.view.options.shellEntries->canChangeExplorerMenu, row.canChange);
    EXPECT_EQ(window.view.options.shellEntries->sendTo, row.sendTo);
  }
}

TEST(ShellEntriesTest, TurningTheExplorerEntryOnSaysWhereItIs) {
  FakeWindow window;
  window.commands.Run(ID_EXPLORER_MENU);
  EXPECT_EQ(window.installation.GetExplorerState(), ExplorerState::ThisCopy);
  EXPECT_EQ(window.desktop.messages, Dialogs{NowInTheMenu});
  EXPECT_TRUE(window.view.options.shellEntries->explorerMenu);

  window.commands.Run(ID_EXPLORER_MENU);
  EXPECT_EQ(window.installation.GetExplorerState(), ExplorerState::None);
  EXPECT_EQ(window.desktop.messages.size(), 1u) << "turning it off shows no message";
  EXPECT_FALSE(window.view.options.shellEntries->explorerMenu);
}

TEST(ShellEntriesTest, TheSendToLinkShowsNoMessage) {
  FakeWindow window;
  window.commands.Run(ID_SEND_TO);
  EXPECT_EQ(window.installation.GetSendToState(), SendToState::ThisCopy);
  EXPECT_TRUE(window.view.options.shellEntries->sendTo);
  window.commands.Run(ID_SEND_TO);
  EXPECT_EQ(window.installation.GetSendToState(), SendToState::None);
  EXPECT_FALSE(window.view.options.shellEntries->sendTo);
  EXPECT_TRUE(window.desktop.messages.empty());
}

TEST(ShellEntriesTest, AnEntryOfAnotherCopyIsReplaced) {
  for (const bool exists : {true, false}) {
    FakeWindow window;
    if (exists) window.installSystem.files = {GoneProgram};
    window.installSystem.registry[FakeInstallSystem::User(FileCommand, u"")] = GoneProgram;
    window.installSystem.links[Link] = GoneProgram;
    window.commands.Run(ID_EXPLORER_MENU);
    window.commands.Run(ID_SEND_TO);
    EXPECT_EQ(window.installation.GetExplorerState(), ExplorerState::ThisCopy);
    EXPECT_EQ(window.installation.GetSendToState(), SendToState::ThisCopy);
  }
}

TEST(ShellEntriesTest, AFailedChangeIsReported) {
  FakeWindow window;
  window.installSystem.failingKey = u"Software";
  window.installSystem.linksFail = true;
  window.commands.Run(ID_EXPLORER_MENU);
  window.commands.Run(ID_SEND_TO);
  EXPECT_EQ(window.desktop.messages, (Dialogs{CouldNotBeChanged, CouldNotBeChanged}));
  EXPECT_FALSE(window.view.options.shellEntries->explorerMenu);
  EXPECT_FALSE(window.view.options.shellEntries->sendTo);
}

TEST(ShellEntriesTest, StaleEntriesAreOfferedForRepairAtTheStart) {
  struct Row {
    bool explorer;
    bool link;
    bool packaged;
    bool offered;
  };
  const std::vector<Row> rows = {{false, false, false, false},
                                 {true, false, false, true},
                                 {false, true, false, true},
                                 {true, true, false, true},
                                 {true, true, true, false}};
  for (const Row& row : rows) {
    StartingWindow window;
    if (row.explorer) window.MakeExplorerStale();
    if (row.link) window.MakeLinkStale();
    window.install.packaged = row.packaged;
    window.Start();
    EXPECT_EQ(window.view.banner,
              row.offered ? std::optional<std::u16string>(StaleBanner) : std::nullopt);
    EXPECT_EQ(window.banners.Kind(), row.offered ? BannerKind::StaleExplorer : BannerKind::None);
  }
}

TEST(ShellEntriesTest, AnEntryOfACopyThatExistsIsLeftAlone) {
  StartingWindow window;
  window.MakeExplorerStale();
  window.MakeLinkStale();
  window.install.files = {GoneProgram};
  window.Start();
  EXPECT_EQ(window.view.banner, std::nullopt);
}

TEST(ShellEntriesTest, TheLinksOfTheBannerRepairStaleEntries) {
  struct Row {
    bool explorer;
    bool link;
    const char16_t* click;
    ExplorerState explorerAfter;
    SendToState linkAfter;
  };
  using enum ExplorerState;
  const std::vector<Row> rows = {
      {true, true, u"a", ThisCopy, ThisCopy}, {true, false, u"a", ThisCopy, None},
      {false, true, u"a", None, ThisCopy},    {true, true, u"r", None, None},
      {true, false, u"r", None, None},        {false, true, u"r", None, None},
      {true, true, u"x", Stale, Stale},       {true, true, u"?", None, None},
  };
  for (const Row& row : rows) {
    StartingWindow window;
    if (row.explorer) window.MakeExplorerStale();
    if (row.link) window.MakeLinkStale();
    window.Start();
    window.bannerLinks.Follow(row.click);
    EXPECT_EQ(window.view.banner, std::nullopt);
    EXPECT_EQ(window.Explorer(), row.explorerAfter);
    EXPECT_EQ(window.SendTo(), row.linkAfter);
    EXPECT_TRUE(window.desktop.messages.empty());
  }
}

TEST(ShellEntriesTest, ARepairThatFailsIsSilent) {
  StartingWindow window;
  window.MakeExplorerStale();
  window.MakeLinkStale();
  window.Start();
  window.install.failingKey = u"Software";
  window.install.linksFail = true;
  window.bannerLinks.Follow(u"a");
  EXPECT_EQ(window.Explorer(), ExplorerState::Stale);
  EXPECT_EQ(window.SendTo(), SendToState::Stale);
  EXPECT_EQ(window.view.banner, std::nullopt);
  EXPECT_TRUE(window.desktop.messages.empty());
}

TEST(ShellEntriesTest, ARepairLeavesAnEntryOfAnotherCopyAlone) {
  StartingWindow window;
  window.MakeExplorerStale();
  window.install.files = {u"E:\\Sumwright.exe"};
  window.install.links[Link] = u"E:\\Sumwright.exe";
  window.Start();
  window.bannerLinks.Follow(u"a");
  EXPECT_EQ(window.Explorer(), ExplorerState::ThisCopy);
  EXPECT_EQ(window.SendTo(), SendToState::OtherCopy);
}

TEST(ShellEntriesTest, APackageHasNoEntries) {
  StartingWindow window;
  window.install.packaged = true;
  window.Start();
  EXPECT_FALSE(window.view.hasShellEntryCommands);
  EXPECT_FALSE(window.view.options.shellEntries);
  EXPECT_FALSE(window.view.options.uppercase);
  window.commands.Run(ID_UPPERCASE);
  EXPECT_TRUE(window.view.options.uppercase);

  StartingWindow unpackaged;
  unpackaged.Start();
  EXPECT_TRUE(unpackaged.view.hasShellEntryCommands);
}

void Install(FakeInstallSystem& system, const char16_t* folder) {
  system.registry[{RegistryHive::CurrentUser, RegistryView::Bits64,
                   u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                   u"{6C0E5B52-8D3A-4F0B-9E47-1A2D7C93F5E8}_is1",
                   u"InstallLocation"}] = folder;
}

TEST(ShellEntriesTest, APortableCopyOffersTheSetupInPlaceOfItsFolder) {
  StartingWindow portable;
  portable.Start();
  EXPECT_EQ(portable.view.programFolderText, u"Get the &Setup (Explorer Menu, Start Menu)...");
  portable.commands.Run(ID_PROGRAM_FOLDER);
  EXPECT_EQ(portable.desktop.openedAddresses,
            std::vector<std::u16string>{std::u16string(ProductPage)});
  EXPECT_TRUE(portable.desktop.openedFolders.empty());

  StartingWindow installed;
  Install(installed.install, u"C:\\Tools\\Sumwright\\");
  installed.Start();
  EXPECT_EQ(installed.view.programFolderText, u"") << "the text is not changed";
  installed.commands.Run(ID_PROGRAM_FOLDER);
  EXPECT_EQ(installed.desktop.openedFolders, std::vector<std::u16string>{u"C:\\Tools\\Sumwright"});
  EXPECT_TRUE(installed.desktop.openedAddresses.empty());
}

TEST(ShellEntriesTest, AboutSaysWhereThisCopyIs) {
  for (const bool installed : {false, true}) {
    FakeWindow window;
    if (installed) Install(window.installSystem, u"C:\\Tools\\Sumwright");
    window.commands.Run(ID_ABOUT);
    ASSERT_EQ(window.desktop.messages.size(), 1u);
    const TaskDialogSpec& about = window.desktop.messages[0];
    EXPECT_EQ(about.title, u"About Sumwright");
    EXPECT_EQ(about.mainInstruction, u"Sumwright " SUMWRIGHT_VERSION);
    EXPECT_EQ(about.content,
              std::u16string(u"Copyright \u00A9 2026 the Sumwright authors\n"
                             u"Freeware from Zendrik.\n\n") +
                  (installed ? u"Installed in " : u"Portable copy in ") +
                  u"C:\\Tools\\Sumwright\n\n"
                  u"<a href=\"https://sumwright.example/\">https://sumwright.example/</a>\n"
                  u"<a href=\"mailto:support@sumwright.example\">support@sumwright.example</a>");
    EXPECT_EQ(about.footer,
              u"XXH64, XXH3 and XXH128 come from xxHash (BSD 2-Clause licence), BLAKE3 from the "
              u"BLAKE3 reference library (CC0 1.0 or Apache 2.0 licence). CRC32, SHA-3 and the "
              u"icons are Sumwright's own (MIT licence). The other algorithms come from Windows.");
    EXPECT_EQ(about.icon, TaskDialogIcon::None);
    EXPECT_EQ(about.customIcon, IDI_APP);
    EXPECT_TRUE(about.buttons.empty());
    EXPECT_EQ(about.commonButtons, 0u);
  }
}

const std::u16string ToolText =
    u"swrhash calculates and verifies checksums in a command prompt, in scripts and in batch "
    u"files. Its checksum files also work with Linux sha256sum.\n\nswrhash setup.exe\nswrhash -a "
    u"md5,sha256 -r C:\\Downloads > checksums.txt\nswrhash -c SHA256SUMS\nswrhash --expect <hash> "
    u"setup.exe\n\nRun swrhash --help for all options.";

TEST(ShellEntriesTest, TheDialogOffersToGetAMissingCommandLineTool) {
  FakeWindow window;
  window.commands.Run(ID_CLI_TOOL);
  EXPECT_EQ(window.desktop.messages,
            (Dialogs{{.title = u"Command-Line Tool",
                      .mainInstruction = u"Command-line tool (swrhash)",
                      .content = ToolText,
                      .footer = u"swrhash comes with the setup and in sumwrite.zip (every build in "
                                u"one zip).",
                      .buttons = {{102, u"Get swrhash\nOpens the Sumwright page"}},
                      .commonButtons = CloseButton,
                      .commandLinks = true,
                      .customIcon = IDI_COMMAND_LINE_TOOL}}));
}

TEST(ShellEntriesTest, TheDialogOffersToOpenAnExistingCommandLineTool) {
  FakeWindow window;
  window.installSystem.files = {u"C:\\Tools\\Sumwright\\swrhash.exe"};
  window.commands.Run(ID_CLI_TOOL);
  EXPECT_EQ(
      window.desktop.messages,
      (Dialogs{{.title = u"Command-Line Tool",
                .mainInstruction = u"Command-line tool (swrhash)",
                .content = ToolText,
                .footer = u"swrhash.exe runs on every Windows. swrhash64.exe and swrhasharm64.exe "
                          u"are the faster native builds. Folder: C:\\Tools\\Sumwright",
                .buttons = {{100,
                             u"Open a command prompt here\nIn the program folder, ready to run "
                             u"swrhash"},
                            {101, u"Open the program folder"}},
                .commonButtons = CloseButton,
                .commandLinks = true,
                .customIcon = IDI_COMMAND_LINE_TOOL}}));
}

TEST(ShellEntriesTest, TheChoiceInTheToolsDialogIsCarriedOut) {
  using Prompts = std::vector<std::pair<std::u16string, std::u16string>>;
  struct Row {
    int answer;
    Prompts prompts;
    std::vector<std::u16string> folders;
    std::vector<std::u16string> addresses;
  };
  const std::u16string folder = u"C:\\Tools\\Sumwright";
  const std::vector<Row> rows = {
      {100, {{folder, u"swrhash --help"}}, {}, {}},
      {101, {}, {folder}, {}},
      {102, {}, {}, {std::u16string(ProductPage)}},
      {2, {}, {}, {}},
      {8, {}, {}, {}},
  };
  for (const Row& row : rows) {
    FakeWindow window;
    window.desktop.answer = row.answer;
    window.commands.Run(ID_CLI_TOOL);
    EXPECT_EQ(window.desktop.prompts, row.prompts);
    EXPECT_EQ(window.desktop.openedFolders, row.folders);
    EXPECT_EQ(window.desktop.openedAddresses, row.addresses);
  }
}

}  // namespace
}  // namespace app
