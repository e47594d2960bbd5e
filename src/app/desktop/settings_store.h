// Where the user's settings are kept.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // Nothing, or false, when the value is missing or of another type or size.
  virtual std::optional<uint32_t> ReadDwordSetting(const std::u16string& name) = 0;
  virtual bool ReadBinarySetting(const std::u16string& name, std::span<uint8_t> data) = 0;
  // If this fails, the value is unchanged.
  virtual void WriteDwordSetting(const std::u16string& name, uint32_t value) = 0;
  virtual void WriteBinarySetting(const std::u16string& name, std::span<const uint8_t> data) = 0;
};

}  // namespace app
