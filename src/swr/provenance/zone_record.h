// Where a downloaded file came from, as the browser left it beside the file in the stream
// "Zone.Identifier".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

struct ZoneRecord {
  bool found = false;   // the stream is there and could be read
  int32_t zoneId = -1;  // -1 when the stream does not say
  std::u16string hostUrl;
  std::u16string referrerUrl;

  bool operator==(const ZoneRecord&) const = default;
};

inline constexpr int32_t InternetZone = 3;  // URLZONE_INTERNET of urlmon.h

// The record of the file, not found where there is none or the file system has no such streams.
// Reads at most 64 KiB.
ZoneRecord ReadZoneRecord(const std::u16string& path);

// The record that the text of such a stream means: lines of KEY=VALUE in any section. Of a key that
// comes twice the last one counts.
ZoneRecord ParseZoneText(std::u16string_view text);

}  // namespace swr
