// Reads the download origins of files without holding up the window.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "swr/provenance/zone_record.h"

namespace app {

struct RowOrigin {
  uint64_t rowId = 0;
  swr::ZoneRecord record;
};

// Implemented by the program and by the tests. Called on the window's thread.
class OriginReads {
 public:
  virtual ~OriginReads() = default;

  // Starts reading the origin of the row's file. Returns the record if that is done at once, as on
  // a local disk. Otherwise the record is late: DetailsPane::OnOriginsRead is called when it can be
  // taken, which never happens if the system does not answer. To be called once for each row.
  virtual std::optional<swr::ZoneRecord> ReadOrigin(uint64_t rowId, const std::u16string& path) = 0;

  // The late records that have been read and not been taken yet.
  virtual std::vector<RowOrigin> TakeLateOrigins() = 0;
};

}  // namespace app
