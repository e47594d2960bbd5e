#include "tests/support/dpi_awareness_win.h"

#include "swr/system/windows_api_win.h"

namespace swr::testing {

void BecomeDpiAware() {
  // Looked up at run time, because a program that imports it would not start before Windows 10.
  using Function = BOOL(WINAPI*)(HANDLE);
  const auto setContext = reinterpret_cast<Function>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetProcessDpiAwarenessContext")));
  const HANDLE perMonitorV2 = reinterpret_cast<HANDLE>(LONG_PTR{-4});
  if (setContext == nullptr || !setContext(perMonitorV2)) SetProcessDPIAware();
}

}  // namespace swr::testing
