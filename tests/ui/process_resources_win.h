// The system resources that a process holds, counted from outside.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace app::testing {

struct ProcessResources {
  uint32_t handles = 0;
  uint32_t gdiObjects = 0;
  uint32_t userObjects = 0;  // 0 under Wine, which does not say
};

struct ProcessMemory {
  uint64_t workingSet = 0;    // bytes
  uint64_t privateBytes = 0;  // that no other process shares
};

// The process must be open for reading. Both throw std::runtime_error when nothing can be counted.
ProcessResources CountResources(HANDLE process);
ProcessMemory MeasureMemory(HANDLE process);

}  // namespace app::testing
