#include "tests/support/own_resources.h"

#include <filesystem>
#include <iterator>

namespace swr::testing {
namespace {

// Every count includes the descriptor with which the folder itself is read.
size_t EntriesOf(const char* folder) {
  const std::filesystem::directory_iterator first(folder);
  return static_cast<size_t>(std::distance(begin(first), end(first)));
}

}  // namespace

OwnResources CountOwnResources() {
  return {.handles = EntriesOf("/proc/self/fd"), .threads = EntriesOf("/proc/self/task")};
}

}  // namespace swr::testing
