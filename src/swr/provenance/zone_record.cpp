#include "swr/provenance/zone_record.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"

namespace swr {
namespace {

constexpr uint32_t LargestStream = 65536;  // bytes; the rest is not read

// The number at the start of the text, clamped to its type; 0 if there is none.
int32_t LeadingNumber(std::u16string_view text) {
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
  int64_t value = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    value = value * 10 + (unit - u'0');
    if (value > std::numeric_limits<int32_t>::max()) {
      return isNegative ? std::numeric_limits<int32_t>::min() : std::numeric_limits<int32_t>::max();
    }
  }
  return static_cast<int32_t>(isNegative ? -value : value);
}

void TakeLine(std::u16string_view line, ZoneRecord& record) {
  const size_t equals = line.find(u'=');
  if (equals == line.npos) return;
  const std::u16string_view key = TrimText(line.substr(0, equals));
  const std::u16string_view value = TrimText(line.substr(equals + 1));
  if (EqualsNoCase(key, u"ZoneId")) {
    record.zoneId = LeadingNumber(value);
  } else if (EqualsNoCase(key, u"HostUrl")) {
    record.hostUrl = value;
  } else if (EqualsNoCase(key, u"ReferrerUrl")) {
    record.referrerUrl = value;
  }
}

}  // namespace

ZoneRecord ParseZoneText(std::u16string_view text) {
  ZoneRecord record;
  record.found = true;
  while (!text.empty()) {
    const size_t end = text.find(u'\n');
    TakeLine(text.substr(0, end), record);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  return record;
}

ZoneRecord ReadZoneRecord(const std::u16string& path) {
  // Elsewhere that would be the name of an ordinary file.
  if (NativePathStyle != PathStyle::Windows) return {};
  File stream;
  if (File::Open(ToLongPath(path) + u":Zone.Identifier", FileSharing::Everything, stream) != 0) {
    return {};
  }
  std::vector<char> bytes(LargestStream);
  const ReadResult read = stream.Read(bytes.data(), LargestStream);
  if (!read.succeeded) return {};
  return ParseZoneText(DecodeTextBytes({bytes.data(), read.bytes}));
}

}  // namespace swr
