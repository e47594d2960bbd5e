// Two settings of the user's screen that tests change and put back: high contrast, and the scaling
// of the primary screen.
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

// Nothing when the system does not tell.
std::optional<HighContrastSetting> ReadHighContrast();
// Not written into the user's profile: a new session begins with what was set before. Takes some
// seconds, in which the system changes the theme. False when the system refuses.
bool SetHighContrast(const HighContrastSetting& setting);

// In percent. Nothing where the system has no call for it: before Windows 10, and in some virtual
// machines.
std::optional<int> ReadScreenScaling();
// False when the system refuses or this screen can't have it.
bool SetScreenScaling(int percent);

}  // namespace kit
