// An in-memory registry, disk and Send To menu.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>

#include "app/install/install_system.h"
#include "swr/system/error_codes.h"

namespace app::testing {

class FakeInstallSystem final : public InstallSystem {
 public:
  using Place = std::tuple<RegistryHive, RegistryView, std::u16string, std::u16string>;

  std::u16string ProgramPath() override { return programPath; }
  bool RunsFromPackage() override { return packaged; }
  bool Exists(const std::u16string& path) override {
    return path == programPath || files.contains(path) || links.contains(path);
  }
  std::optional<std::u16string> ReadRegistryText(RegistryHive hive, RegistryView view,
                                                 const std::u16string& key,
                                                 const std::u16string& name) override {
    const auto found = registry.find({hive, view, key, name});
    if (found == registry.end()) return std::nullopt;
    return found->second;
  }
  uint32_t WriteRegistryText(const std::u16string& key, const std::u16string& name,
                             const std::u16string& text) override {
    if (failingKey && key.starts_with(*failingKey)) return swr::ErrorAccessDenied;
    registry[User(key, name)] = text;
    return 0;
  }
  uint32_t DeleteRegistryTree(const std::u16string& key) override {
    if (failingKey && key.starts_with(*failingKey)) return swr::ErrorAccessDenied;
    const size_t count = std::erase_if(registry, [&](const auto& entry) {
      const std::u16string& found = std::get<2>(entry.first);
      return std::get<0>(entry.first) == RegistryHive::CurrentUser &&
             (found == key || found.starts_with(key + u"\\"));
    });
    return count == 0 ? swr::ErrorFileNotFound : 0;
  }
  void AnnounceEntryChange() override { ++announcements; }
  std::optional<std::u16string> SendToFolder() override { return sendToFolder; }
  std::optional<std::u16string> ReadLinkTarget(const std::u16string& linkPath) override {
    const auto found = links.find(linkPath);
    return found == links.end() ? std::nullopt : found->second;
  }
  bool WriteLink(const std::u16string& linkPath, const std::u16string& target,
                 const std::u16string& description) override {
    if (linksFail) return false;
    links[linkPath] = target;
    linkDescription = description;
    return true;
  }
  uint32_t RemoveFile(const std::u16string& path) override {
    if (linksFail) return swr::ErrorAccessDenied;
    return links.erase(path) == 0 ? swr::ErrorFileNotFound : 0;
  }

  // A value of the user's registry.
  static Place User(const std::u16string& key, const std::u16string& name) {
    return {RegistryHive::CurrentUser, RegistryView::Own, key, name};
  }

  std::u16string programPath = u"C:\\Tools\\Sumwright\\Sumwright.exe";
  bool packaged = false;
  std::set<std::u16string> files;
  std::map<Place, std::u16string> registry;
  std::optional<std::u16string> failingKey;  // keys that begin with this can't be changed
  int announcements = 0;
  std::optional<std::u16string> sendToFolder = u"C:\\Users\\ann\\SendTo";
  std::map<std::u16string, std::optional<std::u16string>> links;  // nullopt: can't be read
  std::u16string linkDescription;
  bool linksFail = false;
};

}  // namespace app::testing
