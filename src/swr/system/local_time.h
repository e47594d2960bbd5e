// Moments of the file system as the user's clock shows them.
#pragma once

#include <cstdint>
#include <optional>

#include "swr/system/file.h"

namespace swr {

struct CalendarTime {
  uint32_t year = 0;
  uint32_t month = 0;  // from 1
  uint32_t day = 0;    // from 1
  uint32_t hour = 0;
  uint32_t minute = 0;

  bool operator==(const CalendarTime&) const = default;
};

// In the local time zone. Nothing for an unknown time or one that the system can't convert.
std::optional<CalendarTime> ToLocalTime(FileTime time);

}  // namespace swr
