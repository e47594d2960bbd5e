// What a process holds of the system, counted from outside.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace app::testing {

struct ProcessResources {
  uint32_t handles = 0;
  uint32_t gdiObjects = 0;
  uint32_t userObjects = 0;  // 0 under Wine, which does not say
};

// The process must be open for reading. Throws std::runtime_error when nothing can be counted.
ProcessResources CountResources(HANDLE process);

}  // namespace app::testing
