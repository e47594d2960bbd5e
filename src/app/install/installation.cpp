#include "app/install/installation.h"

#include <algorithm>
#include <array>

#include "app/install/setup_id.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/text/text.h"

namespace app {
namespace {

constexpr char16_t EntryText[] = u"Calculate checksums";
constexpr char16_t Verb[] = u"ZendrikSumwright";
// The menus of files and of folders.
constexpr const char16_t* MenuKeys[] = {u"Software\\Classes\\*\\shell\\",
                                        u"Software\\Classes\\Directory\\shell\\"};
constexpr char16_t LinkName[] = u"Sumwright.lnk";
constexpr char16_t LinkDescription[] = u"Calculate checksums with Sumwright";

std::u16string EntryKey(const char16_t* menuKey) { return std::u16string(menuKey) + Verb; }

std::u16string Quoted(const std::u16string& text) { return u"\"" + text + u"\""; }

// The program that a command in the registry starts: the quoted text or, without quotes, everything
// before the first blank.
std::u16string ProgramOfCommand(const std::u16string& command) {
  if (command.size() > 1 && command.front() == u'"') {
    return command.substr(1, command.find(u'"', 1) - 1);
  }
  return command.substr(0, command.find(u' '));
}

std::u16string_view WithoutLastSeparators(std::u16string_view path) {
  while (path.ends_with(u'\\') || path.ends_with(u'/')) path.remove_suffix(1);
  return path;
}

bool IsGone(uint32_t error) { return error == 0 || error == swr::ErrorFileNotFound; }

}  // namespace

std::u16string Installation::ProgramFolder() const {
  const std::u16string path = ProgramPath();
  return std::u16string(swr::SplitPath(path).folder);
}

bool Installation::HasCompanion(const std::u16string& fileName) const {
  return system_.Exists(ProgramFolder() + u"\\" + fileName);
}

bool Installation::IsInstalledCopy() const {
  const std::u16string folder = ProgramFolder();
  const std::u16string key = UninstallKey;
  // The setup installs for one user or for all, and may be a 32-bit or a 64-bit program.
  for (const RegistryHive hive : {RegistryHive::CurrentUser, RegistryHive::LocalMachine}) {
    for (const RegistryView view : {RegistryView::Bits64, RegistryView::Bits32}) {
      const auto location = system_.ReadRegistryText(hive, view, key, u"InstallLocation");
      if (location && swr::EqualsNoCase(WithoutLastSeparators(*location), folder)) return true;
    }
  }
  return false;
}

bool Installation::IsThisProgram(const std::u16string& path) const {
  const std::u16string own = ProgramPath();
  return swr::EqualsNoCase(path, own) ||
         swr::EqualsNoCase(swr::SplitPath(path).folder, swr::SplitPath(own).folder);
}

ExplorerState Installation::StateOf(const std::u16string& target) const {
  if (IsThisProgram(target)) return ExplorerState::ThisCopy;
  return system_.Exists(target) ? ExplorerState::OtherCopy : ExplorerState::Stale;
}

// Only the entry for files is read, because both are written and removed together.
std::optional<std::u16string> Installation::EntryCommand(RegistryHive hive) const {
  auto command =
      system_.ReadRegistryText(hive, RegistryView::Own, EntryKey(MenuKeys[0]) + u"\\command", u"");
  if (command && command->empty()) return std::nullopt;
  return command;
}

ExplorerState Installation::GetExplorerState() const {
  if (const auto command = EntryCommand(RegistryHive::CurrentUser)) {
    return StateOf(ProgramOfCommand(*command));
  }
  return EntryCommand(RegistryHive::LocalMachine) ? ExplorerState::MachineWide
                                                  : ExplorerState::None;
}

bool Installation::SetExplorerMenu(bool enable) {
  const std::u16string program = Quoted(ProgramPath());
  bool done = true;
  for (const char16_t* menuKey : MenuKeys) {
    const std::u16string key = EntryKey(menuKey);
    if (!enable) {
      done = IsGone(system_.DeleteRegistryTree(key)) && done;
      continue;
    }
    const bool written =
        system_.WriteRegistryText(key, u"", EntryText) == 0 &&
        system_.WriteRegistryText(key, u"Icon", program + u",0") == 0 &&
        system_.WriteRegistryText(key + u"\\command", u"", program + u" \"%1\"") == 0;
    done = written && done;
  }
  system_.AnnounceEntryChange();
  return done;
}

std::optional<std::u16string> Installation::LinkPath() const {
  const auto folder = system_.SendToFolder();
  if (!folder) return std::nullopt;
  return swr::JoinPath(*folder, LinkName, swr::PathStyle::Windows);
}

SendToState Installation::GetSendToState() const {
  const auto link = LinkPath();
  if (!link || !system_.Exists(*link)) return SendToState::None;
  const auto target = system_.ReadLinkTarget(*link);
  return target ? StateOf(*target) : SendToState::Stale;
}

bool Installation::SetSendToLink(bool enable) {
  const auto link = LinkPath();
  if (!link) return false;
  return enable ? system_.WriteLink(*link, ProgramPath(), LinkDescription)
                : IsGone(system_.RemoveFile(*link));
}

}  // namespace app
