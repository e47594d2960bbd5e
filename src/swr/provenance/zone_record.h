// The download origin of a file, which browsers record in its alternate stream "Zone.Identifier".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

struct ZoneRecord {
  bool found = false;   // whether the stream exists and could be read
  int32_t zoneId = -1;  // -1 if the stream has none
  std::u16string hostUrl;
  std::u16string referrerUrl;

  bool operator==(const ZoneRecord&) const = default;
};

inline constexpr int32_t InternetZone = 3;  // URLZONE_INTERNET of urlmon.h

// Reads the record of the file, at most 64 KiB of it. Not found if there is none or the file system
// has no alternate streams.
ZoneRecord ReadZoneRecord(const std::u16string& path);

// Parses the text of such a stream: lines of KEY=VALUE in any section. If a key occurs several
// times, the last one is used. The result is always found.
ZoneRecord ParseZoneText(std::u16string_view text);

}  // namespace swr
