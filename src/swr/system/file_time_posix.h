// Conversion between POSIX times and FileTime.
#pragma once

#include <cstdint>

namespace swr {

// Seconds from 1601-01-01, where FILETIME begins, to 1970-01-01.
inline constexpr int64_t FileTimeEpoch = 11644473600;
inline constexpr int64_t TicksPerSecond = 10'000'000;

}  // namespace swr
