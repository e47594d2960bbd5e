// Reads text that is drawn without a window of its own, as in Windows' task dialogs, through the
// accessibility interface that screen readers use.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

namespace app::testing {

// The first text in reading order that is neither a button nor a link; empty when there is none or
// the window does not expose it.
std::u16string FirstAccessibleText(HWND window);

}  // namespace app::testing
