// The Windows error code that says what an errno says.
#pragma once

#include <cstdint>

namespace swr {

uint32_t ErrorFromErrno(int value);

}  // namespace swr
