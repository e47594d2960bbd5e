#include "app/window/edit_focus_win.h"

#include <array>

namespace app {
namespace {

// The edit control that has the focus, or null.
HWND FocusedEdit() {
  const HWND focus = GetFocus();
  if (focus == nullptr) return nullptr;
  std::array<wchar_t, 16> name = {};
  GetClassNameW(focus, name.data(), name.size());
  return lstrcmpiW(name.data(), L"Edit") == 0 ? focus : nullptr;
}

}  // namespace

bool DialogEditFocus::PasteIntoFocusedEdit() {
  const HWND edit = FocusedEdit();
  if (edit != nullptr) SendMessageW(edit, WM_PASTE, 0, 0);
  return edit != nullptr;
}

bool DialogEditFocus::CopyFromFocusedEdit() {
  const HWND edit = FocusedEdit();
  if (edit != nullptr) SendMessageW(edit, WM_COPY, 0, 0);
  return edit != nullptr;
}

void DialogEditFocus::SelectAll() {
  if (const HWND edit = FocusedEdit()) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
  } else {
    list_.SelectAllRows();
  }
}

}  // namespace app
