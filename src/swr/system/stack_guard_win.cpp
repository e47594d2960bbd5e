// The value that the compiler puts on the stack before each array and looks at again before a
// function returns, and the end of a process in which it was overwritten.
//
// The compiler's own library would draw the value from CryptGenRandom, for which Windows 7 looks
// for a library in the program's folder before any code of the program runs. This one asks nothing
// but the kernel: what other compilers for Windows take for it too.
#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace {

constexpr unsigned FastFailStackCookie = 2;  // FAST_FAIL_STACK_COOKIE_CHECK_FAILURE of winnt.h

// A change of one bit anywhere changes about half of the bits.
uint64_t Mix(uint64_t value) {
  value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
  value = (value ^ value >> 27) * 0x94D049BB133111EB;
  return value ^ value >> 31;
}

}  // namespace

extern "C" {

uintptr_t __stack_chk_guard = static_cast<uintptr_t>(0x9E3779B97F4A7C00);

[[noreturn]] void __stack_chk_fail() {
  // Ends the process at once, without a handler that an attacker may have written over.
  __asm__ volatile("int $0x29" : : "c"(FastFailStackCookie));
  __builtin_unreachable();
}
}

namespace {

// Before all other initialisations. Without a guard of its own, which would change under it.
__attribute__((constructor(101), no_stack_protector)) void DrawStackGuard() {
  FILETIME time;
  GetSystemTimeAsFileTime(&time);
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  // The system chooses both addresses anew for each start.
  const auto stack = reinterpret_cast<uintptr_t>(&counter);
  const auto code = reinterpret_cast<uintptr_t>(&DrawStackGuard);
  uint64_t value = Mix(uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
  value = Mix(value ^ static_cast<uint64_t>(counter.QuadPart));
  value = Mix(value ^ (uint64_t{GetCurrentProcessId()} << 32 | GetCurrentThreadId()));
  value = Mix(value ^ stack);
  value = Mix(value ^ code);
  // A text that runs over ends in a null, and can't write one in the middle.
  __stack_chk_guard = static_cast<uintptr_t>(value) & ~uintptr_t{0xFF};
}

}  // namespace
