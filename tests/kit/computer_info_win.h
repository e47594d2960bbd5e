// What a report says about the computer: enough to understand a result, nothing that identifies its
// user.
#pragma once

#include <string>
#include <vector>

#include "tests/kit/report.h"

namespace kit {

// The process should be DPI-aware (BecomeDpiAware), otherwise sizes are not those of the screen.
std::vector<Property> ComputerInfo(const std::wstring& workFolder);

// Names of the antivirus programs and firewalls registered with Windows; empty where Windows has no
// such list (servers) or does not return it.
std::vector<std::string> SecurityProducts();

// Bytes of memory.
uint64_t MemorySize();
bool Is64BitWindows();

}  // namespace kit
