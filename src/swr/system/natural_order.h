// Sorts many texts in the natural order of SystemCompareNatural.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace swr {

// The text with this number, without zero units.
using NumberedText = std::function<std::u16string(size_t)>;

// The numbers from 0 to count - 1, sorted by their texts. Texts that compare equal keep their
// order, in either direction. Asks for each text once, in ascending order, and for a long one
// perhaps once more.
std::vector<size_t> SortNaturally(size_t count, const NumberedText& textOf, bool descending);

// Sorts `order` by merging its sorted runs: if these are long, it takes little more than one
// comparison per element. goesBefore(a, b) is a strict total order.
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
