// Makes a call of the system go elsewhere inside a running program, as a fault of the system would.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <string_view>

#include "tests/ui/remote_call_win.h"

namespace app::testing {

// For as long as it lives, calls that the program's own file makes of this imported function go to
// another function of a system library, which must take as many arguments and do nothing but give a
// number. The program must be of as many bits as the test. Throws std::runtime_error when the
// program imports no such function.
class ReplacedImport {
 public:
  ReplacedImport(HWND window, std::string_view function, FARPROC replacement);
  // Puts things back, if the program still runs.
  ~ReplacedImport();
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

 private:
  template <typename Value>
  Value ReadAt(uintptr_t address) const;
  uintptr_t FindEntry(uintptr_t image, std::string_view function) const;
  void Write(uintptr_t function) const;

  HANDLE process_ = nullptr;
  uintptr_t entry_ = 0;  // the address of the function's place in the import table
  uintptr_t original_ = 0;
};

// Functions of the system that only give a number, in place of PostMessageW and of one that takes a
// window.
FARPROC PostsNothing();  // always fails
FARPROC GivesANegativeNumber();

}  // namespace app::testing
