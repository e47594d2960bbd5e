// Showing and enabling a dialog's controls. When a control that has the focus is hidden or
// disabled, the list gets the focus, or the keyboard would be dead.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app {

void ShowControl(HWND dialog, int control, bool shows);
void EnableControl(HWND dialog, int control, bool enabled);

}  // namespace app
