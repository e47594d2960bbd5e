// The length of random tests: short by default, longer if the environment says so.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace swr::testing {

// The number in the environment variable `name`, or `usual` if it is not set.
inline uint64_t NumberFromEnvironment(const char* name, uint64_t usual) {
  const char* text = std::getenv(name);
  return text == nullptr ? usual : std::strtoull(text, nullptr, 10);
}

}  // namespace swr::testing
