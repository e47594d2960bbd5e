// Task dialogs of the system.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/task_dialog.h"

namespace app {

// Shows the dialog over `owner` and returns when it is closed: the id of the button, CancelAnswer
// also when the dialog can't be shown.
int ShowTaskDialog(HWND owner, const TaskDialogSpec& spec);

}  // namespace app
