// One file in the list: what identifies it, and what is known about it so far.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/on_demand.h"
#include "app/rows/shared_path.h"
#include "swr/hash/algorithms.h"
#include "swr/hash/packed_digests.h"
#include "swr/provenance/signature.h"
#include "swr/provenance/zone_record.h"
#include "swr/system/file.h"

namespace app {

enum class RowStatus : uint8_t { Waiting = 0, Hashing = 1, Done = 2, Failed = 3, Cancelled = 4 };

// Never changes while the row exists.
struct RowIdentity {
  uint64_t id = 0;  // given by the table; never 0 and never reused
  SharedPath path;  // full where the system could make it full

  std::u16string Path() const { return path.Text(); }
  // The parts of the path after and before its last separator.
  const std::u16string& Name() const { return path.Name(); }
  std::u16string_view Folder() const { return path.Folder(); }
};

// What only a few rows have.
struct RowExtras {
  // The expected digest from a checksum file. `expectedAlgos` has the algorithms that it may belong
  // to, in the order of comparison.
  std::vector<uint8_t> expectedBytes;
  std::vector<swr::AlgoId> expectedAlgos;
  std::shared_ptr<const std::u16string> checksumFile;  // full path; null without one
  uint32_t checksumLine = 0;                           // from 1
  // Both are looked up when the details of the row are first shown.
  std::optional<swr::SignatureResult> signature;
  std::optional<swr::ZoneRecord> zone;
};

// Changed through RowTable only, which keeps its counters in step. A list can have a million rows,
// so every byte counts.
struct RowState {
  uint64_t size = 0;  // bytes; from the file system at first, then as read by hashing
  swr::FileTime modified = 0;
  swr::AlgoMask pendingMask = 0;  // queued for this row and not yet reported
  uint32_t error = 0;             // Windows error code of a failed row
  RowStatus status = RowStatus::Waiting;
  // The user cancelled what was queued for this row, and nothing was queued for it since. If a row
  // is Cancelled but this is false, a later job for it is still queued: the row got its status from
  // the late result of an earlier, cancelled job.
  bool cancelledByUser = false;
  bool changed = false;             // the file changed while some pass was reading it
  bool hasExpected = false;         // a checksum file lists the row; see the extras
  bool signatureRequested = false;  // a check is in progress
  bool originRequested = false;     // its download origin is being read
  // Kept for as long as the row exists, whichever algorithms are selected.
  swr::PackedDigests digests;
  OnDemand<RowExtras> extras;
};

struct Row : RowIdentity, RowState {};

// Prefetch hints for a row that will be read soon: for all but its digests, for the whole row, and
// for what it points to.
inline constexpr size_t CacheLine = 64;
inline void PrefetchRowState(const Row& row) {
  __builtin_prefetch(&row);
  __builtin_prefetch(reinterpret_cast<const char*>(&row) + CacheLine);
}
inline void PrefetchRow(const Row& row) {
  PrefetchRowState(row);
  __builtin_prefetch(reinterpret_cast<const char*>(&row) + 2 * CacheLine);
}
inline void PrefetchRowTexts(const Row& row) {
  __builtin_prefetch(row.Name().data());
  row.digests.Prefetch();
}

// The algorithms of `mask` whose digests the row has, ascending.
inline std::vector<swr::AlgoId> PresentAlgos(const Row& row, swr::AlgoMask mask) {
  return swr::IdsFromMask(mask & row.digests.PresentMask());
}

}  // namespace app
