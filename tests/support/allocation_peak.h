// How much memory a piece of code takes from the heap at most, by way of `new`. For programs that
// link allocation_peak.cpp, which replaces the allocation functions.
#pragma once

#include <cstddef>

namespace swr::testing {

// Counts from its construction on, on all threads. One at a time.
class AllocationPeak {
 public:
  AllocationPeak();
  ~AllocationPeak();
  AllocationPeak(const AllocationPeak&) = delete;
  AllocationPeak& operator=(const AllocationPeak&) = delete;

  // The most bytes that were held at once of those allocated since the construction.
  size_t Bytes() const;
};

}  // namespace swr::testing
