// Sorts many texts in the natural order of SystemCompareNatural.
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace swr {

// Texts without zero units. Used by one thread at a time.
class NaturalOrder {
 public:
  void Reserve(size_t count);
  void Add(std::u16string_view text);
  // The numbers of the texts, from 0 in the order in which they were added, sorted. Texts that
  // compare equal keep the order in which they were added, in either direction.
  std::vector<size_t> Sorted(bool descending) const;

 private:
  // Sixteen bytes of a key, as numbers that compare like the bytes.
  struct Prefix {
    uint64_t high = 0;
    uint64_t low = 0;
    friend auto operator<=>(const Prefix&, const Prefix&) = default;
  };
  struct Key {
    const char* bytes = nullptr;
    size_t size = 0;
    // The bytes from `depth` on, which may be the end, as far as they fit; zeros after the end.
    Prefix PrefixFrom(size_t depth) const;
  };

  void SortByKeys(std::vector<size_t>& order, bool descending) const;
  // Memory for this many bytes, aligned for text, that lives as long as the object.
  char* Take(size_t size);

  std::vector<Key> keys_;
  // Zero-terminated; only where keys are not exact.
  std::vector<const char16_t*> texts_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* free_ = nullptr;  // in the last block
  size_t freeSize_ = 0;
  std::u16string key_;  // of the text being added
};

// Sorts `order`, of which long runs are sorted already: it then takes little more than one
// comparison for each element. goesBefore(a, b) is a strict total order.
template <typename GoesBefore>
void MergeSortedRuns(std::vector<size_t>& order, const GoesBefore& goesBefore) {
  std::vector<size_t> starts;  // of the runs, and the end of the last one
  for (size_t i = 0; i < order.size(); ++i) {
    if (i == 0 || goesBefore(order[i], order[i - 1])) starts.push_back(i);
  }
  starts.push_back(order.size());
  std::vector<size_t> merged(starts.size() > 2 ? order.size() : 0);
  while (starts.size() > 2) {
    std::vector<size_t> left;
    for (size_t run = 0; run + 1 < starts.size(); run += 2) {
      const auto at = [&](size_t start) {
        return order.begin() +
               static_cast<ptrdiff_t>(starts[std::min(run + start, starts.size() - 1)]);
      };
      std::merge(at(0), at(1), at(1), at(2), merged.begin() + static_cast<ptrdiff_t>(starts[run]),
                 goesBefore);
      left.push_back(starts[run]);
    }
    left.push_back(order.size());
    starts = std::move(left);
    order.swap(merged);
  }
}

}  // namespace swr
