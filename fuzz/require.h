// Checks a requirement of a fuzz target.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Ends the process with a report if `holds` is false; the fuzzer then keeps the input. `what`
// states the requirement.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated requirement: %s\n", what);
  std::abort();
}

}  // namespace fuzz
