#include "tests/support/own_resources.h"

#include <chrono>
#include <thread>

namespace swr::testing {

OwnResources WaitForResources(const OwnResources& expected) {
  using namespace std::chrono_literals;
  const auto deadline = std::chrono::steady_clock::now() + 250ms;
  OwnResources found = CountOwnResources();
  while (found != expected && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(1ms);
    found = CountOwnResources();
  }
  return found;
}

}  // namespace swr::testing
