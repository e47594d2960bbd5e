// The user's settings in the registry, under HKEY_CURRENT_USER\Software\Zendrik\Sumwright.
#pragma once

#include "app/desktop/settings_store.h"

namespace app {

class RegistrySettings final : public SettingsStore {
 public:
  std::optional<uint32_t> ReadDwordSetting(const std::u16string& name) override;
  bool ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) override;
  void WriteDwordSetting(const std::u16string& name, uint32_t value) override;
  void WriteBinarySetting(const std::u16string& name, std::span<const uint8_t> data) override;
};

}  // namespace app
