#include "app/window/focused_edit_win.h"

#include <array>

namespace app {

HWND FocusedEdit() {
  const HWND focus = GetFocus();
  if (focus == nullptr) return nullptr;
  std::array<wchar_t, 16> name = {};
  GetClassNameW(focus, name.data(), name.size());
  return lstrcmpiW(name.data(), L"Edit") == 0 ? focus : nullptr;
}

}  // namespace app
