// Text that is drawn without a window of its own, as Windows' task dialogs do it: read the way a
// screen reader does.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

namespace app::testing {

// The first text that is neither a button nor a link, in the order in which it is read; empty when
// there is none or the window does not tell.
std::u16string FirstAccessibleText(HWND window);

}  // namespace app::testing
