// A digest as bytes. Text is made of it only for showing and writing (see digest_text.h).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace swr {

// The first `length` bytes are the digest, in the order in which it is printed; the rest is zero.
struct Digest {
  std::array<uint8_t, 64> bytes = {};
  uint8_t length = 0;

  std::span<const uint8_t> View() const { return {bytes.data(), length}; }
};

// Place of one algorithm's digest. The digest means something only when `present`.
struct DigestSlot : Digest {
  bool present = false;
};

// The digests of one file, a place for each algorithm by its index (IndexOf of algorithms.h). Only
// those that are there take room: most files have one digest to three of fifteen.
class DigestSlots {
 public:
  // A slot that is not present for an algorithm without a digest.
  const DigestSlot& operator[](size_t index) const {
    static constexpr DigestSlot none;
    for (const Entry& entry : entries_) {
      if (entry.index == index) return entry.slot;
    }
    return none;
  }
  // The slot as one that can be written; not present yet when it is new. Valid until another one
  // is made.
  DigestSlot& Make(size_t index) {
    for (Entry& entry : entries_) {
      if (entry.index == index) return entry.slot;
    }
    entries_.push_back({static_cast<uint8_t>(index), {}});
    return entries_.back().slot;
  }

  bool IsEmpty() const { return entries_.empty(); }
  // Bit n is set where the slot n is present.
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

  std::vector<Entry> entries_;  // in the order in which they were made
};

}  // namespace swr
