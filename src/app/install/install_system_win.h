// The registry, the disk and the shell of Windows.
#pragma once

#include "app/install/install_system.h"

namespace app {

class WindowsInstallSystem final : public InstallSystem {
 public:
  std::u16string ProgramPath() override;
  bool RunsFromPackage() override;
  bool Exists(const std::u16string& path) override;
  std::optional<std::u16string> ReadRegistryText(RegistryHive hive, RegistryView view,
                                                 const std::u16string& key,
                                                 const std::u16string& name) override;
  uint32_t WriteRegistryText(const std::u16string& key, const std::u16string& name,
                             const std::u16string& text) override;
  uint32_t DeleteRegistryTree(const std::u16string& key) override;
  void AnnounceEntryChange() override;
  std::optional<std::u16string> SendToFolder() override;
  std::optional<std::u16string> ReadLinkTarget(const std::u16string& linkPath) override;
  bool WriteLink(const std::u16string& linkPath, const std::u16string& target,
                 const std::u16string& description) override;
  uint32_t RemoveFile(const std::u16string& path) override;
};

}  // namespace app
