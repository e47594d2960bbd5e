#include "app/install/installation.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/fake_install_system.h"

namespace app {
namespace {

using testing::FakeInstallSystem;

constexpr char16_t FileEntry[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright";
constexpr char16_t FolderEntry[] = u"Software\\Classes\\Directory\\shell\\ZendrikSumwright";
constexpr char16_t FileCommand[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright\\command";
constexpr char16_t FolderCommand[] =
    u"Software\\Classes\\Directory\\shell\\ZendrikSumwright\\command";
constexpr char16_t Link[] = u"C:\\Users\\ann\\SendTo\\Sumwright.lnk";
constexpr char16_t UninstallEntry[] =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
    u"{6C0E5B52-8D3A-4F0B-9E47-1A2D7C93F5E8}_is1";

struct InstallationTest : ::testing::Test {
  FakeInstallSystem system;
  Installation installation{system};
};

TEST_F(InstallationTest, TheFolderEndsBeforeTheLastSeparator) {
  const std::vector<std::pair<std::u16string, std::u16string>> rows = {
      {u"C:\\Tools\\Sumwright.exe", u"C:\\Tools"},
      {u"C:/Tools/Sumwright.exe", u"C:/Tools"},
      {u"C:\\Sumwright.exe", u"C:"},
      {u"Sumwright.exe", u""},
  };
  for (const auto& [path, folder] : rows) {
    system.programPath = path;
    EXPECT_EQ(installation.ProgramFolder(), folder);
  }
}

TEST_F(InstallationTest, AnyProgramInTheSameFolderIsTheSameCopy) {
  const std::vector<std::pair<std::u16string, bool>> rows = {
      {u"C:\\Tools\\Sumwright\\Sumwright.exe", true},
      {u"c:\\TOOLS\\sumwright\\SUMWRIGHT.EXE", true},
      {u"C:\\Tools\\Sumwright\\Sumwright-x86.exe", true},
      {u"C:\\Tools\\Sumwright/other.exe", true},
      {u"C:\\Tools\\Sumwright.exe", false},
      {u"C:\\Tools\\Sumwright\\old\\Sumwright.exe", false},
      {u"Sumwright.exe", false},
      {u"", false},
  };
  for (const auto& [path, is] : rows) EXPECT_EQ(installation.IsThisProgram(path), is);
}

TEST_F(InstallationTest, TheCommandDeterminesTheStateOfTheExplorerEntry) {
  system.files = {u"D:\\Other\\Sumwright.exe", u"C:\\My"};
  const std::vector<std::pair<std::u16string, ExplorerState>> rows = {
      {u"", ExplorerState::None},
      {u"\"C:\\Tools\\Sumwright\\Sumwright.exe\" \"%1\"", ExplorerState::ThisCopy},
      {u"\"c:\\tools\\SUMWRIGHT\\old name.exe\" \"%1\"", ExplorerState::ThisCopy},
      {u"C:\\Tools\\Sumwright\\x.exe %1", ExplorerState::ThisCopy},
      {u"C:\\Tools\\Sumwright\\x.exe", ExplorerState::ThisCopy},
      {u"\"C:\\Tools\\Sumwright\\Sumwright.exe", ExplorerState::ThisCopy},
      {u"\"D:\\Other\\Sumwright.exe\" \"%1\"", ExplorerState::OtherCopy},
      {u"\"D:\\Gone\\Sumwright.exe\" \"%1\"", ExplorerState::Stale},
      // Without quotes a path ends at its first space.
      {u"C:\\My Tools\\Sumwright.exe %1", ExplorerState::OtherCopy},
      {u"C:\\Gone Tools\\Sumwright.exe %1", ExplorerState::Stale},
      {u"\"", ExplorerState::Stale},
      {u" ", ExplorerState::Stale},
  };
  for (const auto& [command, state] : rows) {
    system.registry = {{FakeInstallSystem::User(FileCommand, u""), command}};
    EXPECT_EQ(installation.GetExplorerState(), state) << ::testing::PrintToString(command);
  }
}

TEST_F(InstallationTest, AnEntryForAllUsersIsUsedOnlyWhereTheUserHasNone) {
  const FakeInstallSystem::Place machine = {RegistryHive::LocalMachine, RegistryView::Own,
                                            FileCommand, u""};
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::None);
  system.registry[machine] = u"";
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::None);
  system.registry[machine] = u"anything";
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::MachineWide);
  system.registry[FakeInstallSystem::User(FileCommand, u"")] = u"";
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::MachineWide);
  system.registry[FakeInstallSystem::User(FileCommand, u"")] = u"D:\\Gone.exe";
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::Stale);
}

TEST_F(InstallationTest, AnEntryForFoldersOnlyIsIgnored) {
  system.registry[FakeInstallSystem::User(FolderCommand, u"")] =
      u"\"C:\\Tools\\Sumwright\\Sumwright.exe\" \"%1\"";
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::None);
}

TEST_F(InstallationTest, TurningTheMenuOnWritesThreeValuesForFilesAndForFolders) {
  EXPECT_TRUE(installation.SetExplorerMenu(true));
  std::map<FakeInstallSystem::Place, std::u16string> expected;
  for (const std::u16string entry : {FileEntry, FolderEntry}) {
    expected[FakeInstallSystem::User(entry, u"")] = u"Calculate checksums";
    expected[FakeInstallSystem::User(entry, u"Icon")] =
        u"\"C:\\Tools\\Sumwright\\Sumwright.exe\",0";
    expected[FakeInstallSystem::User(entry + u"\\command", u"")] =
        u"\"C:\\Tools\\Sumwright\\Sumwright.exe\" \"%1\"";
  }
  EXPECT_EQ(system.registry, expected);
  EXPECT_EQ(system.announcements, 1);
  EXPECT_EQ(installation.GetExplorerState(), ExplorerState::ThisCopy);

  EXPECT_TRUE(installation.SetExplorerMenu(false));
  EXPECT_TRUE(system.registry.empty());
  EXPECT_EQ(system.announcements, 2);
  EXPECT_TRUE(installation.SetExplorerMenu(false)) << "a missing entry needs no removal";
}

TEST_F(InstallationTest, AFailureOfOneEntryDoesNotStopTheOther) {
  for (const std::u16string failing : {FileEntry, FolderEntry}) {
    const std::u16string other = failing == FileEntry ? FolderEntry : FileEntry;
    system.registry.clear();
    system.failingKey = failing;
    EXPECT_FALSE(installation.SetExplorerMenu(true));
    EXPECT_EQ(system.registry.size(), 3u);
    EXPECT_TRUE(system.registry.contains(FakeInstallSystem::User(other + u"\\command", u"")));
    EXPECT_FALSE(installation.SetExplorerMenu(false));
    EXPECT_TRUE(system.registry.empty());
  }
  EXPECT_EQ(system.announcements, 4) << "the shell is always notified";
}

TEST_F(InstallationTest, AHalfWrittenEntryIsAFailure) {
  system.failingKey = FileCommand;
  EXPECT_FALSE(installation.SetExplorerMenu(true));
}

TEST_F(InstallationTest, TheTargetDeterminesTheStateOfTheSendToLink) {
  system.files = {u"D:\\Other\\Sumwright.exe"};
  EXPECT_EQ(installation.GetSendToState(), SendToState::None);
  struct Row {
    std::optional<std::u16string> target;
    SendToState state;
  };
  const std::vector<Row> rows = {
      {u"C:\\Tools\\Sumwright\\Sumwright.exe", SendToState::ThisCopy},
      {u"C:\\Tools\\Sumwright\\Sumwright-x86.exe", SendToState::ThisCopy},
      {u"D:\\Other\\Sumwright.exe", SendToState::OtherCopy},
      {u"D:\\Gone\\Sumwright.exe", SendToState::Stale},
      {u"", SendToState::Stale},
      {std::nullopt, SendToState::Stale},
  };
  for (const Row& row : rows) {
    system.links[Link] = row.target;
    EXPECT_EQ(installation.GetSendToState(), row.state);
  }
  system.sendToFolder = std::nullopt;
  EXPECT_EQ(installation.GetSendToState(), SendToState::None);
}

TEST_F(InstallationTest, TheSendToLinkIsWrittenAndRemoved) {
  EXPECT_TRUE(installation.SetSendToLink(true));
  EXPECT_EQ(system.links.at(Link), system.programPath);
  EXPECT_EQ(system.linkDescription, u"Calculate checksums with Sumwright");
  EXPECT_EQ(installation.GetSendToState(), SendToState::ThisCopy);
  EXPECT_TRUE(installation.SetSendToLink(false));
  EXPECT_TRUE(system.links.empty());
  EXPECT_TRUE(installation.SetSendToLink(false)) << "a missing entry needs no removal";

  system.linksFail = true;
  EXPECT_FALSE(installation.SetSendToLink(true));
  EXPECT_FALSE(installation.SetSendToLink(false));
  system.linksFail = false;
  system.sendToFolder = std::nullopt;
  EXPECT_FALSE(installation.SetSendToLink(true));
  EXPECT_FALSE(installation.SetSendToLink(false));
}

TEST_F(InstallationTest, ACopyIsInstalledInTheFolderThatTheSetupRecorded) {
  system.programPath = u"C:\\Program Files\\X\\Sumwright.exe";
  const std::vector<std::pair<std::u16string, bool>> rows = {
      {u"C:\\Program Files\\X", true},      {u"C:\\Program Files\\X\\", true},
      {u"C:\\Program Files\\X/\\", true},   {u"C:\\PROGRAM FILES\\x", true},
      {u"C:\\Program Files", false},        {u"C:\\Program Files\\X\\bin", false},
      {u"\"C:\\Program Files\\X\"", false}, {u"", false},
      {u"C:\\Program Files\\X\\.", false},
  };
  for (const RegistryHive hive : {RegistryHive::CurrentUser, RegistryHive::LocalMachine}) {
    for (const RegistryView view : {RegistryView::Bits64, RegistryView::Bits32}) {
      for (const auto& [location, is] : rows) {
        system.registry = {{{hive, view, UninstallEntry, u"InstallLocation"}, location}};
        EXPECT_EQ(installation.IsInstalledCopy(), is) << ::testing::PrintToString(location);
      }
    }
  }
  system.registry.clear();
  EXPECT_FALSE(installation.IsInstalledCopy());
}

TEST_F(InstallationTest, ALocationThatDoesNotMatchIsIgnored) {
  const auto record = [&](RegistryHive hive, RegistryView view, const char16_t* location) {
    system.registry[{hive, view, UninstallEntry, u"InstallLocation"}] = location;
  };
  record(RegistryHive::CurrentUser, RegistryView::Bits64, u"D:\\Elsewhere");
  record(RegistryHive::CurrentUser, RegistryView::Bits32, u"");
  EXPECT_FALSE(installation.IsInstalledCopy()) << "a portable copy while another one is installed";
  record(RegistryHive::LocalMachine, RegistryView::Bits32, u"C:\\Tools\\Sumwright\\");
  EXPECT_TRUE(installation.IsInstalledCopy());
}

TEST_F(InstallationTest, AnEmptyLocationMatchesAnEmptyFolder) {
  system.programPath = u"Sumwright.exe";
  system.registry[{RegistryHive::CurrentUser, RegistryView::Bits64, UninstallEntry,
                   u"InstallLocation"}] = u"\\";
  EXPECT_TRUE(installation.IsInstalledCopy());
}

TEST_F(InstallationTest, ACompanionIsInTheProgramsFolder) {
  EXPECT_FALSE(installation.HasCompanion(u"swrhash.exe"));
  system.files = {u"C:\\Tools\\Sumwright\\swrhash.exe"};
  EXPECT_TRUE(installation.HasCompanion(u"swrhash.exe"));
}

}  // namespace
}  // namespace app
