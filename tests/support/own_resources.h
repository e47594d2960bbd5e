// What this process holds of the system, for tests that look for leaks.
#pragma once

#include <cstddef>

namespace swr::testing {

struct OwnResources {
  size_t handles = 0;  // open files, threads, events and the like; descriptors on POSIX systems
  size_t threads = 0;

  bool operator==(const OwnResources&) const = default;
};

// Throws std::runtime_error when the system does not say.
OwnResources CountOwnResources();

// Counts until it finds this, for a thread that has been joined can be there for a moment longer.
// The last count.
OwnResources WaitForResources(const OwnResources& expected);

}  // namespace swr::testing
