// Digests as bytes. They become text only for display and output (see digest_text.h).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace swr {

// The first `length` bytes are the digest, in the order in which it is printed; the others are
// zero.
struct Digest {
  std::array<uint8_t, 64> bytes = {};
  uint8_t length = 0;

  std::span<const uint8_t> View() const { return {bytes.data(), length}; }
};

// The digest of one algorithm, if there is one: the other fields are meaningless unless `present`.
struct DigestSlot : Digest {
  bool present = false;
};

// The digests of one file, by the index of the algorithm (IndexOf of algorithms.h). Sparse, because
// most files have one to three of the fifteen.
class DigestSlots {
 public:
  // For an algorithm without a digest: a slot that is not present.
  const DigestSlot& operator[](size_t index) const {
    static constexpr DigestSlot none;
    for (const Entry& entry : entries_) {
      if (entry.index == index) return entry.slot;
    }
    return none;
  }
  // The slot for writing; a new one is not present yet. The reference is valid until the next call.
  DigestSlot& Make(size_t index) {
    for (Entry& entry : entries_) {
      if (entry.index == index) return entry.slot;
    }
    entries_.push_back({static_cast<uint8_t>(index), {}});
    return entries_.back().slot;
  }

  // Makes room for this many, so that Make moves none of them.
  void Reserve(size_t count) { entries_.reserve(count); }

  bool IsEmpty() const { return entries_.empty(); }
  // Bit n is set if the slot of index n is present.
  uint32_t PresentMask() const {
    uint32_t mask = 0;
    for (const Entry& entry : entries_) mask |= uint32_t{entry.slot.present} << entry.index;
    return mask;
  }

 private:
  struct Entry {
    uint8_t index = 0;
    DigestSlot slot;
  };

  std::vector<Entry> entries_;  // in order of creation
};

}  // namespace swr
