// How much a random test does: a little in the usual run of all tests, more where the environment
// says so.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace swr::testing {

// The number in the environment variable of this name, or the usual one.
inline uint64_t NumberFromEnvironment(const char* name, uint64_t usual) {
  const char* text = std::getenv(name);
  return text == nullptr ? usual : std::strtoull(text, nullptr, 10);
}

}  // namespace swr::testing
