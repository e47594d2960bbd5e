// One file in the list.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "swr/hash/algorithms.h"
#include "swr/hash/digest.h"
#include "swr/provenance/signature.h"
#include "swr/provenance/zone_record.h"
#include "swr/system/file.h"

namespace app {

enum class RowStatus : uint8_t { Waiting = 0, Hashing = 1, Done = 2, Failed = 3, Cancelled = 4 };

struct ListRow {
  uint64_t id = 0;  // never 0 and never reused; the only reference to a row on other threads
  std::u16string path;
  std::u16string name;    // of `path`, behind its last separator
  std::u16string folder;  // of `path`, before that separator
  uint64_t size = 0;      // bytes; from the file system, then what hashing read
  swr::FileTime modified = 0;
  // Never taken away while the row lives, whatever algorithms are selected.
  swr::DigestSlots digests;
  swr::AlgoMask pendingMask = 0;  // queued for this row and not yet reported
  RowStatus status = RowStatus::Waiting;
  // The user cancelled what was queued for this row, and nothing was queued for it since. A row
  // that is cancelled without this has a later job, which the result of the earlier one hides.
  bool cancelledByUser = false;
  uint32_t error = 0;    // Windows error code of a failed row
  bool changed = false;  // some pass saw the file change while it was read
  // What a checksum file says of this file. `expectedAlgos` holds the algorithms that the digest
  // may belong to, in the order of comparison.
  bool hasExpected = false;
  std::vector<uint8_t> expectedBytes;
  std::vector<swr::AlgoId> expectedAlgos;
  std::u16string checksumFile;  // full path
  uint32_t checksumLine = 0;    // from 1
  // Both are looked for when the details of the row are shown first.
  std::optional<swr::SignatureResult> signature;
  bool signatureRequested = false;  // the check is under way
  std::optional<swr::ZoneRecord> zone;
};

// The algorithms of `mask` whose digest the row has, ascending.
inline std::vector<swr::AlgoId> PresentAlgos(const ListRow& row, swr::AlgoMask mask) {
  return swr::IdsFromMask(mask & row.digests.PresentMask());
}

}  // namespace app
