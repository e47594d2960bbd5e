// Showing and enabling a dialog's controls. When the focused control is hidden or disabled, the
// list gets the focus, because the keyboard would stop working otherwise.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app {

void ShowControl(HWND dialog, int control, bool shows);
void EnableControl(HWND dialog, int control, bool enabled);

}  // namespace app
