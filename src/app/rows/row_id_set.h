// A set of row ids, for checking many ids.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace app {

// One bit for each id from the lowest to the highest: the ids of a list's rows lie close together.
class RowIdSet {
 public:
  // An id may occur more than once.
  explicit RowIdSet(std::span<const uint64_t> ids) {
    if (ids.empty()) return;
    const auto [lowest, highest] = std::ranges::minmax(ids);
    first_ = lowest;
    bits_.resize(static_cast<size_t>(highest - lowest) + 1);
    for (const uint64_t id : ids) bits_[static_cast<size_t>(id - first_)] = true;
  }

  bool Contains(uint64_t id) const {
    return id >= first_ && id - first_ < bits_.size() && bits_[static_cast<size_t>(id - first_)];
  }

 private:
  uint64_t first_ = 0;
  std::vector<bool> bits_;
};

}  // namespace app
