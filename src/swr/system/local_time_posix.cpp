#include "swr/system/local_time.h"

#include <ctime>

#include "swr/system/file_time_posix.h"

namespace swr {

std::optional<CalendarTime> ToLocalTime(FileTime time) {
  if (time == 0) return std::nullopt;
  const auto seconds = static_cast<std::time_t>(time / TicksPerSecond) - FileTimeEpoch;
  std::tm parts;
  if (localtime_r(&seconds, &parts) == nullptr) return std::nullopt;
  return CalendarTime{static_cast<uint32_t>(parts.tm_year + 1900),
                      static_cast<uint32_t>(parts.tm_mon + 1), static_cast<uint32_t>(parts.tm_mday),
                      static_cast<uint32_t>(parts.tm_hour), static_cast<uint32_t>(parts.tm_min)};
}

}  // namespace swr
