// A set of the hash values of many paths.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace app {

// Open addressing in one block of memory. Loading a checksum file of 100,000 lines takes a third
// longer with std::unordered_set, which has a block for each value and misses the cache twice.
class HashValueSet {
 public:
  // Returns false if the value is in the set already. Zero is stored as one.
  bool Insert(uint64_t value) {
    if (2 * size_ >= slots_.size()) Grow();
    if (!Place(std::max<uint64_t>(value, 1))) return false;
    ++size_;
    return true;
  }

 private:
  static constexpr uint64_t Free = 0;

  bool Place(uint64_t value) {
    const size_t mask = slots_.size() - 1;
    size_t slot = static_cast<size_t>(value) & mask;
    for (; slots_[slot] != Free; slot = (slot + 1) & mask) {
      if (slots_[slot] == value) return false;
    }
    slots_[slot] = value;
    return true;
  }
  void Grow() {
    constexpr size_t fewest = 1024;
    const std::vector<uint64_t> old =
        std::exchange(slots_, std::vector<uint64_t>(std::max(2 * slots_.size(), fewest), Free));
    for (const uint64_t value : old) {
      if (value != Free) Place(value);
    }
  }

  std::vector<uint64_t> slots_;  // a power of two of them, at most half of them in use
  size_t size_ = 0;
};

}  // namespace app
