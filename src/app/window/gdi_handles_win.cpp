#include "app/window/gdi_handles_win.h"

namespace app {

Icon LoadScaledIcon(int id, int size) {
  // Looked up by name: the import library of the tool chain does not have it.
  using LoadFunction = HRESULT(WINAPI*)(HINSTANCE, PCWSTR, int, int, HICON*);
  static const auto load = reinterpret_cast<LoadFunction>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"comctl32.dll"), "LoadIconWithScaleDown")));
  HICON icon = nullptr;
  if (load == nullptr ||
      FAILED(load(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), size, size, &icon))) {
    return Icon();
  }
  return Icon(icon);
}

}  // namespace app
