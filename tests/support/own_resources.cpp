#include "tests/support/own_resources.h"

#include <chrono>
#include <thread>

namespace swr::testing {
namespace {

template <typename Condition>
OwnResources WaitUntil(Condition isAsExpected) {
  using namespace std::chrono_literals;
  const auto deadline = std::chrono::steady_clock::now() + 250ms;
  OwnResources found = CountOwnResources();
  while (!isAsExpected(found) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(1ms);
    found = CountOwnResources();
  }
  return found;
}

}  // namespace

OwnResources WaitForResources(const OwnResources& expected) {
  return WaitUntil([&](const OwnResources& found) { return found == expected; });
}

size_t WaitForThreads(size_t expected) {
  return WaitUntil([&](const OwnResources& found) { return found.threads == expected; }).threads;
}

}  // namespace swr::testing
