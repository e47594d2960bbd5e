// Translation of errno values to Windows error codes.
#pragma once

#include <cstdint>

namespace swr {

// The Windows error code closest in meaning; never 0 or the code for end of file.
uint32_t ErrorFromErrno(int value);

}  // namespace swr
