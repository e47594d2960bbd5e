#include "app/desktop/registry_settings_win.h"

#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <vector>

#include "swr/system/fault_injection.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr wchar_t settingsKey[] = L"Software\\Zendrik\\Sumwright";

}  // namespace

std::optional<uint32_t> RegistrySettings::ReadDwordSetting(const std::u16string& name) {
  if (swr::InjectedFault(swr::SystemCall::ReadSetting)) return std::nullopt;
  DWORD value = 0;
  DWORD size = sizeof value;
  if (RegGetValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), RRF_RT_REG_DWORD, nullptr,
                   &value, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return value;
}

bool RegistrySettings::ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) {
  if (swr::InjectedFault(swr::SystemCall::ReadSetting)) return false;
  // Writes to the caller's buffer only when the value has exactly its size.
  std::vector<uint8_t> stored(data.size());
  DWORD size = static_cast<DWORD>(stored.size());
  if (RegGetValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), RRF_RT_REG_BINARY, nullptr,
                   stored.data(), &size) != ERROR_SUCCESS ||
      size != data.size()) {
    return false;
  }
  std::copy(stored.begin(), stored.end(), data.begin());
  return true;
}

void RegistrySettings::WriteDwordSetting(const std::u16string& name, uint32_t value) {
  if (swr::InjectedFault(swr::SystemCall::WriteSetting)) return;
  RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), REG_DWORD, &value,
                  sizeof value);
}

void RegistrySettings::WriteBinarySetting(const std::u16string& name,
                                          std::span<const uint8_t> data) {
  if (swr::InjectedFault(swr::SystemCall::WriteSetting)) return;
  RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), REG_BINARY, data.data(),
                  static_cast<DWORD>(data.size()));
}

}  // namespace app
