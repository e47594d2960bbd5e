#include "app/system/dpi_win.h"

#include "swr/system/system_library_win.h"

namespace app {

int GetDpi(HWND window) {
  // Missing on older systems.
  static UINT(WINAPI* const getDpiForWindow)(HWND) =
      swr::FindLoadedFunction(L"user32.dll", "GetDpiForWindow");
  if (getDpiForWindow != nullptr && window != nullptr) {
    return static_cast<int>(getDpiForWindow(window));
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace app
