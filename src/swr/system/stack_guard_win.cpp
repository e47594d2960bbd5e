// The stack canary: the value that the compiler places on the stack before each array and checks
// before a function returns, and the handler that ends a process whose canary was overwritten.
//
// The compiler's own library initialises the canary with CryptGenRandom, for which Windows 7
// searches the program's folder for a library before any code of the program runs. This version
// uses kernel calls only, and the same sources of entropy as other compilers for Windows.
#include "swr/system/windows_api_win.h"

#include <cstdint>

namespace {

constexpr unsigned FastFailStackCookie = 2;  // FAST_FAIL_STACK_COOKIE_CHECK_FAILURE of winnt.h

// Each bit of the argument changes about half of the bits of the result.
uint64_t Mix(uint64_t value) {
  value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
  value = (value ^ value >> 27) * 0x94D049BB133111EB;
  return value ^ value >> 31;
}

}  // namespace

extern "C" {

uintptr_t __stack_chk_guard = static_cast<uintptr_t>(0x9E3779B97F4A7C00);

[[noreturn]] void __stack_chk_fail() {
  // Ends the process at once, without a handler that an attacker may have overwritten.
  __asm__ volatile("int $0x29" : : "c"(FastFailStackCookie));
  __builtin_unreachable();
}
}

namespace {

// Runs before all other initialisers. Compiled without a canary, because it changes the canary.
__attribute__((constructor(101), no_stack_protector)) void RandomizeStackGuard() {
  FILETIME time;
  GetSystemTimeAsFileTime(&time);
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  // The system randomizes both addresses at each start.
  const auto stack = reinterpret_cast<uintptr_t>(&counter);
  const auto code = reinterpret_cast<uintptr_t>(&RandomizeStackGuard);
  uint64_t value = Mix(uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
  value = Mix(value ^ static_cast<uint64_t>(counter.QuadPart));
  value = Mix(value ^ (uint64_t{GetCurrentProcessId()} << 32 | GetCurrentThreadId()));
  value = Mix(value ^ stack);
  value = Mix(value ^ code);
  // The low byte is zero: an overflowing string can't write a zero in its middle.
  __stack_chk_guard = static_cast<uintptr_t>(value) & ~uintptr_t{0xFF};
}

}  // namespace
