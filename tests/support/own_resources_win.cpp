#include "tests/support/own_resources.h"

#include "tests/support/process_handles_win.h"

namespace swr::testing {

OwnResources CountOwnResources() {
  const DWORD self = GetCurrentProcessId();
  return {.handles = CountHandles(self), .threads = CountThreads(self)};
}

}  // namespace swr::testing
