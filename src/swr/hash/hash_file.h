// The digests of one file for a set of algorithms, in a single pass over its bytes. For several
// files, see file_hasher.h.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "swr/hash/algorithms.h"
#include "swr/hash/digest.h"

namespace swr {

struct HashOutcome {
  DigestSlots digests;
  uint64_t bytesRead = 0;  // bytes read and handed to the hashers
  uint32_t error = 0;      // Windows error code; 0 for none
  bool cancelled = false;
  bool changed = false;  // the file was modified during hashing; the digests are still present
};

inline constexpr uint32_t DefaultChunkSize = 1048576;

struct HashOptions {
  // Owned by the caller; may be null. Checked for each chunk, and while the calling thread digests.
  // Must not become false again before the call returns.
  const std::atomic<bool>* cancel = nullptr;
  // Called on the calling thread after each chunk with the bytes read so far; may be empty.
  std::function<void(uint64_t)> progress;
  // Bytes of one read; 0 means DefaultChunkSize.
  uint32_t chunkSize = DefaultChunkSize;
};

// Reads the file at `path` once. At most one of `error` and `cancelled` is set, and with either no
// digest is present: there are no partial results. Error 267 means that the path is a folder, 50
// that a provider can't serve one of the algorithms. Throws only if memory or threads run out.
HashOutcome HashFile(const std::u16string& path, AlgoMask mask, const HashOptions& options);

}  // namespace swr
