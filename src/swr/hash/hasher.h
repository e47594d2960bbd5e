// One incremental hash computation, and the factory that makes one for any algorithm.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "swr/hash/algorithms.h"
#include "swr/hash/digest.h"

namespace swr {

// Used by one thread at a time. Fed with bytes and finished, and then destroyed or reset.
class Hasher {
 public:
  virtual ~Hasher() = default;
  // Takes any number of bytes, including none, in pieces of any size.
  virtual void Update(const void* data, uint64_t size) = 0;
  // From this many bytes on, longer pieces are not noticeably faster per byte.
  virtual size_t EfficientPiece() const { return 2048; }
  // The digest of all bytes so far. After it, only Reset may be called.
  virtual Digest Final() = 0;
  // Returns the hasher to its initial state, whether it was finished or not. Throws as MakeHasher
  // does; a hasher whose reset failed can only be destroyed.
  virtual void Reset() = 0;
};

// Throws std::runtime_error when the platform's provider can't serve the algorithm or `id` is not
// in the catalogue ("unknown algorithm"), and std::bad_alloc.
std::unique_ptr<Hasher> MakeHasher(AlgoId id);

// The digest of `bytes`; throws as MakeHasher does.
Digest HashBytes(AlgoId id, std::span<const uint8_t> bytes);

}  // namespace swr
