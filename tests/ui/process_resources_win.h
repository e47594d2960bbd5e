// The system resources that a process holds, counted from outside.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace app::testing {

struct ProcessResources {
  uint32_t handles = 0;
  uint32_t gdiObjects = 0;
  uint32_t userObjects = 0;  // 0 under Wine, which does not count them
};

struct ProcessMemory {
  uint64_t workingSet = 0;    // bytes
  uint64_t privateBytes = 0;  // not shared with other processes
};

// The process handle must allow reading. Both throw std::runtime_error on failure.
ProcessResources CountResources(HANDLE process);
ProcessMemory MeasureMemory(HANDLE process);

}  // namespace app::testing
