#include "swr/system/local_time.h"

#include "swr/system/windows_api_win.h"

namespace swr {

std::optional<CalendarTime> ToLocalTime(FileTime time) {
  if (time == 0) return std::nullopt;
  const FILETIME universal = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
  FILETIME local;
  SYSTEMTIME parts;
  if (!FileTimeToLocalFileTime(&universal, &local) || !FileTimeToSystemTime(&local, &parts)) {
    return std::nullopt;
  }
  return CalendarTime{parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute};
}

}  // namespace swr
