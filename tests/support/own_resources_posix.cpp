#include "tests/support/own_resources.h"

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

namespace swr::testing {
namespace {

// Every count includes the descriptor with which the folder itself is read.
size_t EntriesOf(const char* folder) {
  const std::filesystem::directory_iterator first(folder);
  return static_cast<size_t>(std::distance(begin(first), end(first)));
}

// ThreadSanitizer starts a thread of its own together with the first one of the program, and keeps
// it. It must be there before the first count.
void StartFirstThread() {
  [[maybe_unused]] static const bool isDone = [] {
    std::thread([] {}).join();
    // A thread can outlive its join for a moment.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return true;
  }();
}

}  // namespace

OwnResources CountOwnResources() {
  StartFirstThread();
  return {.handles = EntriesOf("/proc/self/fd"), .threads = EntriesOf("/proc/self/task")};
}

}  // namespace swr::testing
