// Two display settings that tests change and restore: high contrast, and the scaling of the primary
// screen.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>

namespace kit {

struct HighContrastSetting {
  DWORD flags = 0;
  std::wstring scheme;

  bool IsOn() const { return (flags & HCF_HIGHCONTRASTON) != 0; }
  bool operator==(const HighContrastSetting&) const = default;
};

// Nothing when the system does not report it.
std::optional<HighContrastSetting> ReadHighContrast();
// Not saved in the user's profile: the next session starts with the old setting. Takes a few
// seconds, while the system changes the theme. False when the system refuses.
bool SetHighContrast(const HighContrastSetting& setting);

// In percent. Nothing where the system does not support it: before Windows 10, and in some virtual
// machines.
std::optional<int> ReadScreenScaling();
// False when the system refuses or the screen does not support it.
bool SetScreenScaling(int percent);

}  // namespace kit
