// What a fuzz target requires of the code that it tests, besides not crashing.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Ends the process with a report if `holds` is false; the fuzzer keeps the input. `what` is the
// requirement.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace fuzz
