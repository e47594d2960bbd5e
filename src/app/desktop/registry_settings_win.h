// The user's settings in the registry, under HKEY_CURRENT_USER\Software\Zendrik\Sumwright.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace app {

// Nothing when the value is missing or of another type.
std::optional<uint32_t> ReadRegistryDword(const std::u16string& name);
// False when the value is missing, of another type or not exactly as long as `data`.
bool ReadRegistryBinary(const std::u16string& name, std::span<uint8_t> data);

// A failure leaves the value as it was.
void WriteRegistryDword(const std::u16string& name, uint32_t value);
void WriteRegistryBinary(const std::u16string& name, std::span<const uint8_t> data);

}  // namespace app
