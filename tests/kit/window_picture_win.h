// Takes pictures of the program's window as it appears on the screen, with its menus and dialogs,
// but without anything else on the screen.
#pragma once

#include <string>

#include "tests/ui/running_window_win.h"

namespace app::testing {

// Saves a PNG under this name in the folder of pictures, or does nothing if there is no such
// folder. Waits a moment first, until pending painting is done. Throws std::runtime_error when no
// window is visible or the file can't be written.
void TakePicture(const RunningWindow& window, const std::u16string& name);

}  // namespace app::testing
