// Counts the handles and threads of a process, in a way that also works under Wine.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace swr::testing {

// Both throw std::runtime_error when the system does not return a list.
uint32_t CountHandles(DWORD process);
uint32_t CountThreads(DWORD process);

}  // namespace swr::testing
