// The main window on Windows: its dialog, its message loop, and the code that turns messages into
// calls of flows.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

namespace app {

// Shows the window, adds the paths and runs the message loop until the window is closed. Returns
// the exit code of the process: 1 when the window could not be made, otherwise 0. Needs COM and the
// common controls to be set up.
int RunMainDialog(HINSTANCE instance, int showCommand, const std::vector<std::u16string>& paths);

}  // namespace app
