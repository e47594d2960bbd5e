// Translation of errno values to Windows error codes.
#pragma once

#include <cstdint>

namespace swr {

// The Windows error code that is closest in meaning; never 0 or an end of file.
uint32_t ErrorFromErrno(int value);

}  // namespace swr
