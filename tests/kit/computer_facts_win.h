// What a report says of the computer: enough to understand a result, nothing that names its user.
#pragma once

#include <string>
#include <vector>

#include "tests/kit/report.h"

namespace kit {

// The process should know of the DPI (BecomeDpiAware), or sizes are not those of the screen.
std::vector<Fact> ComputerFacts(const std::wstring& workFolder);

// Names of the antivirus programs and firewalls that have announced themselves to Windows; empty
// where Windows keeps no such list (servers) or does not give it.
std::vector<std::string> SecurityProducts();

// Bytes of memory.
uint64_t MemorySize();
bool Is64BitWindows();

}  // namespace kit
