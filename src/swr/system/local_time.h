// File times in the local time zone.
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

// Nothing if the time is unknown or the system can't convert it.
std::optional<CalendarTime> ToLocalTime(FileTime time);

}  // namespace swr
