// The stream in which a browser tells where a file came from; anybody can have written it.
#include "fuzz/demand.h"
#include "fuzz/fuzz_input.h"
#include "swr/provenance/zone_record.h"
#include "swr/text/text.h"

namespace {

void DemandOneLine(const std::u16string& address) {
  fuzz::Demand(address.find(u'\n') == address.npos, "an address stands on one line");
  fuzz::Demand(swr::TrimText(address) == address, "an address has no blanks around it");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const swr::ZoneRecord record = swr::ParseZoneText(text);
  fuzz::Demand(record.found, "a stream that was read is a record");
  DemandOneLine(record.hostUrl);
  DemandOneLine(record.referrerUrl);
  fuzz::Demand(swr::ParseZoneText(text + u"\n\n[Section]\nOther=1") == record,
               "other keys change nothing");
  const swr::ZoneRecord later = swr::ParseZoneText(text + u"\nZONEID = 3\r\n");
  fuzz::Demand(later.zoneId == swr::InternetZone, "the last of a key counts");
  fuzz::Demand(later.hostUrl == record.hostUrl, "one key leaves the other");
  return 0;
}
