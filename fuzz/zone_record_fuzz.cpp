// Parses the stream in which browsers record the download origin; any program can have written it.
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "swr/provenance/zone_record.h"
#include "swr/text/text.h"

namespace {

void RequireOneLine(const std::u16string& address) {
  fuzz::Require(address.find(u'\n') == address.npos, "an address has no line feed");
  fuzz::Require(swr::TrimText(address) == address, "an address is trimmed");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const swr::ZoneRecord record = swr::ParseZoneText(text);
  fuzz::Require(record.found, "every text is a record");
  RequireOneLine(record.hostUrl);
  RequireOneLine(record.referrerUrl);
  fuzz::Require(swr::ParseZoneText(text + u"\n\n[Section]\nOther=1") == record,
                "other keys are ignored");
  const swr::ZoneRecord later = swr::ParseZoneText(text + u"\nZONEID = 3\r\n");
  fuzz::Require(later.zoneId == swr::InternetZone, "the last value of a key is used");
  fuzz::Require(later.hostUrl == record.hostUrl, "a key does not affect others");
  return 0;
}
