// The digests of one file for a set of algorithms, in a single pass over its bytes.
//
// A file that fits in one chunk is hashed on the calling thread. For a longer one the calling
// thread reads ahead into a ring of four chunks while one thread for each algorithm digests them,
// so that the slowest algorithm sets the pace and no byte is read twice or copied.
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
  uint64_t bytesRead = 0;  // bytes read and handed on at the moment the run ended
  uint32_t error = 0;      // Windows error code; 0 for none
  bool cancelled = false;
  bool changed = false;  // the file was written to during the read: a warning beside the digests
};

struct HashOptions {
  // Owned by the caller; may be null. Looked at once for each chunk.
  const std::atomic<bool>* cancel = nullptr;
  // Called on the calling thread after each chunk with the bytes read so far; may be empty.
  std::function<void(uint64_t)> progress;
  uint32_t chunkSize = 1048576;  // bytes of one read
};

// Reads the file at `path` once. At most one of `error` and `cancelled` is set, and with either no
// digest is present: a partial result is never delivered. 267 says that the path is a folder, 50
// that a provider can't serve one of the algorithms. Throws only when memory or threads run out.
HashOutcome HashFile(const std::u16string& path, AlgoMask mask, const HashOptions& options);

}  // namespace swr
