// The program's icons.
#pragma once

#include "app/system/window_handles_win.h"

namespace app {

// An icon of the program's resources at exactly `size` pixels, scaled down from the next larger
// drawing. Empty when it can't be loaded.
Icon LoadScaledIcon(int id, int size);

// The same picture in pale grey, for a disabled button. Empty when it can't be made.
Icon MakeDisabledIcon(const Icon& icon);

}  // namespace app
