// The system resources of this process, for tests that detect leaks.
#pragma once

#include <cstddef>

namespace swr::testing {

struct OwnResources {
  size_t handles = 0;  // open files, threads, events and the like; descriptors on POSIX systems
  size_t threads = 0;

  bool operator==(const OwnResources&) const = default;
};

// Throws std::runtime_error if the system does not report them.
OwnResources CountOwnResources();

// Counts repeatedly until the count is as expected, for at most 250 ms: a thread can outlive its
// join for a moment. Returns the last count.
OwnResources WaitForResources(const OwnResources& expected);
// The same for threads only, because Wine opens handles at the first use of some functions.
size_t WaitForThreads(size_t expected);

}  // namespace swr::testing
