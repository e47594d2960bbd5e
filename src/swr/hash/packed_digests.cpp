#include "swr/hash/packed_digests.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace swr {

PackedDigests& PackedDigests::operator=(const PackedDigests& other) {
  if (this == &other) return *this;
  std::unique_ptr<uint8_t[]> more;
  if (other.more_) {
    more.reset(new uint8_t[other.size_]);
    std::copy_n(other.more_.get(), other.size_, more.get());
  }
  more_ = std::move(more);
  present_ = other.present_;
  size_ = other.size_;
  own_ = other.own_;
  return *this;
}

size_t PackedDigests::OffsetOf(size_t index) const {
  const uint8_t* bytes = Bytes();
  size_t offset = 0;
  for (size_t i = 0; i < index; ++i) {
    if (Has(i)) offset += 1 + size_t{bytes[offset]};
  }
  return offset;
}

std::span<const uint8_t> PackedDigests::View(size_t index) const {
  if (!Has(index)) return {};
  const uint8_t* entry = Bytes() + OffsetOf(index);
  return {entry + 1, size_t{*entry}};
}

DigestSlot PackedDigests::operator[](size_t index) const {
  DigestSlot slot;
  const std::span<const uint8_t> view = View(index);
  std::ranges::copy(view, slot.bytes.begin());
  slot.length = static_cast<uint8_t>(view.size());
  slot.present = Has(index);
  return slot;
}

void PackedDigests::Set(size_t index, const DigestSlot& slot) {
  const size_t offset = OffsetOf(index);
  const size_t oldEnd = offset + (Has(index) ? 1 + View(index).size() : 0);
  const size_t newEnd = offset + (slot.present ? 1 + size_t{slot.length} : 0);
  const size_t newSize = size_ - oldEnd + newEnd;
  const uint8_t* bytes = Bytes();
  std::unique_ptr<uint8_t[]> more;
  uint8_t* to = own_.data();
  if (newSize > OwnSize) {
    more.reset(new uint8_t[newSize]);
    to = more.get();
  }
  if (to != bytes) std::memcpy(to, bytes, offset);
  // The digests that follow are moved first, because the new one may overwrite them.
  std::memmove(to + newEnd, bytes + oldEnd, size_ - oldEnd);
  if (slot.present) {
    to[offset] = slot.length;
    std::memcpy(to + offset + 1, slot.bytes.data(), slot.length);
  }
  more_ = std::move(more);
  size_ = static_cast<uint16_t>(newSize);
  const uint32_t bit = uint32_t{1} << index;
  present_ = static_cast<uint16_t>(slot.present ? present_ | bit : present_ & ~bit);
}

}  // namespace swr
