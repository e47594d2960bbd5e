// The handles and threads of a process, counted where Wine tells of them too.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace swr::testing {

// Both throw std::runtime_error when the system gives no list.
uint32_t CountHandles(DWORD process);
uint32_t CountThreads(DWORD process);

}  // namespace swr::testing
