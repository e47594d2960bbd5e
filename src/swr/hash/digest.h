// A digest as bytes. Text is made of it only for showing and writing (see digest_text.h).
#pragma once

#include <array>
#include <cstdint>
#include <span>

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

}  // namespace swr
