#include "app/desktop/dpi_win.h"

namespace app {

int GetDpi(HWND window) {
  using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
  static const auto getDpiForWindow = reinterpret_cast<GetDpiForWindowFunction>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  if (getDpiForWindow != nullptr && window != nullptr) {
    return static_cast<int>(getDpiForWindow(window));
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace app
