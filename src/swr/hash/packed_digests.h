// The digests of a file in compact form, for lists of many files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "swr/hash/digest.h"

namespace swr {

// By the index of the algorithm (IndexOf of algorithms.h). Those of the default algorithms are
// stored in the object itself.
class PackedDigests {
 public:
  PackedDigests() = default;
  PackedDigests(const PackedDigests& other) { *this = other; }
  PackedDigests(PackedDigests&&) noexcept = default;
  PackedDigests& operator=(const PackedDigests& other);
  PackedDigests& operator=(PackedDigests&&) noexcept = default;
  ~PackedDigests() = default;

  bool IsEmpty() const { return present_ == 0; }
  bool Has(size_t index) const { return (present_ >> index & 1) != 0; }
  // Bit n is set if there is a digest of index n.
  uint32_t PresentMask() const { return present_; }
  // The digest's bytes, which stay valid until the next Set; empty if there is none.
  std::span<const uint8_t> View(size_t index) const;
  // A copy; not present if there is none.
  DigestSlot operator[](size_t index) const;

  // Replaces the digest of this index, or removes it if the slot is not present.
  void Set(size_t index, const DigestSlot& slot);

  // A hint to the processor that the digests will be read soon.
  void Prefetch() const { __builtin_prefetch(Bytes()); }

 private:
  // MD5, SHA-1 and SHA-256 take 71 bytes.
  static constexpr size_t OwnSize = 76;

  const uint8_t* Bytes() const { return more_ ? more_.get() : own_.data(); }
  // Where the digest of this index is or would be.
  size_t OffsetOf(size_t index) const;

  // The length of each digest and its bytes, by ascending index.
  std::unique_ptr<uint8_t[]> more_;  // of size_ bytes, once they take more than OwnSize
  uint16_t present_ = 0;
  uint16_t size_ = 0;
  std::array<uint8_t, OwnSize> own_ = {};
};

}  // namespace swr
