// Measures the peak of the memory that code allocates with `new`. For programs that link
// allocation_peak.cpp, which replaces the allocation functions.
#pragma once

#include <cstddef>

namespace swr::testing {

// Counts allocations on all threads, from its construction on. Only one may exist at a time.
class AllocationPeak {
 public:
  AllocationPeak();
  ~AllocationPeak();
  AllocationPeak(const AllocationPeak&) = delete;
  AllocationPeak& operator=(const AllocationPeak&) = delete;

  // The largest number of bytes held at once, of those allocated since the construction.
  size_t Bytes() const;
};

}  // namespace swr::testing
