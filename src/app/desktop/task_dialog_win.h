// Messages to the user, as the system's task dialogs.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/desktop.h"

namespace app {

// Shows the message over `owner`, with an OK button, and returns when it is closed.
void ShowTaskDialog(HWND owner, const Message& message);

}  // namespace app
