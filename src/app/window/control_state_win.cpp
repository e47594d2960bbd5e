#include "app/window/control_state_win.h"

#include "resources/resource_ids.h"

namespace app {
namespace {

void MoveFocusFrom(HWND dialog, HWND control) {
  if (GetFocus() != control) return;
  SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDC_LIST)), TRUE);
}

}  // namespace

void ShowControl(HWND dialog, int control, bool shows) {
  const HWND window = GetDlgItem(dialog, control);
  // The control's own style, because IsWindowVisible is false while the dialog is hidden.
  const bool showsNow = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (shows == showsNow) return;
  if (!shows) MoveFocusFrom(dialog, window);
  ShowWindow(window, shows ? SW_SHOWNA : SW_HIDE);
}

void EnableControl(HWND dialog, int control, bool enabled) {
  const HWND window = GetDlgItem(dialog, control);
  if (!enabled) MoveFocusFrom(dialog, window);
  EnableWindow(window, enabled);
}

}  // namespace app
