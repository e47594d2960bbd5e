// Writing all bytes to a file descriptor; shared by everything that writes files or streams.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "swr/system/errno_posix.h"
#include "swr/system/fault_injection.h"

namespace swr {

// Returns 0, or a Windows error code, after which part of the bytes may have been written. Does
// nothing if `bytes` is empty. `call` is the call that fault injection sees for each write.
[[nodiscard]] inline uint32_t WriteAll(int descriptor, std::string_view bytes,
                                       SystemCall call = SystemCall::WriteFile) {
  while (!bytes.empty()) {
    if (const auto fault = InjectedFault(call)) return *fault;
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<size_t>(written));
    } else if (errno != EINTR) {
      return ErrorFromErrno(errno);
    }
  }
  return 0;
}

}  // namespace swr
