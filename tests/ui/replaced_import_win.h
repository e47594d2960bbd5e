// Redirects a system call inside a running program, to simulate a system failure.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <string_view>

#include "tests/ui/remote_call_win.h"

namespace app::testing {

// While the object exists, the program's calls of this imported function go to another function of
// a system library, which must take the same number of arguments and have no effect but its return
// value. Program and test must both be 32-bit or both 64-bit. Throws std::runtime_error when the
// program does not import the function.
class ReplacedImport {
 public:
  ReplacedImport(HWND window, std::string_view function, FARPROC replacement);
  // Restores the call if the program is still running.
  ~ReplacedImport();
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

 private:
  template <typename Value>
  Value ReadAt(uintptr_t address) const;
  uintptr_t FindEntry(uintptr_t image, std::string_view function) const;
  void Write(uintptr_t function) const;

  HANDLE process_ = nullptr;
  uintptr_t entry_ = 0;  // the address of the function's entry in the import table
  uintptr_t original_ = 0;
};

// Replacements for PostMessageW and for functions whose only argument is a window.
FARPROC PostsNothing();  // always fails
FARPROC ReturnsANegativeNumber();

}  // namespace app::testing
