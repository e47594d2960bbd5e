// Pictures of what the program shows: its window with menus and dialogs before it, as they are on
// the screen. Nothing else on the screen gets into the picture.
#pragma once

#include <string>

#include "tests/ui/running_window_win.h"

namespace app::testing {

// Saves a PNG under this name in the folder of pictures, or does nothing where there is none. Waits
// a moment first, until what was asked for last has been painted. Throws std::runtime_error when
// there is nothing to be seen or the file can't be written.
void TakePicture(const RunningWindow& window, const std::u16string& name);

}  // namespace app::testing
