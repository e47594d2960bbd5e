// Makes a system call of a running program slow, as on a distant share.
#pragma once

#include "swr/system/windows_api_win.h"

#include <chrono>
#include <cstdint>
#include <string_view>

namespace app::testing {

// For 64-bit programs. Throws std::runtime_error when the program can't be changed.
class SlowImport {
 public:
  // For a function that the program imports from kernel32 and that takes no floating-point
  // arguments. The function stays unchanged until Replacement() is installed.
  SlowImport(HWND window, std::string_view function, std::chrono::milliseconds delay);

  // The function to pass to ReplacedImport. It stays in the program's memory as long as the program
  // runs, because a thread may be executing it at any time.
  FARPROC Replacement() const { return replacement_; }

 private:
  FARPROC replacement_ = nullptr;
};

}  // namespace app::testing
