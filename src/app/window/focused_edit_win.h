// Editing keys belong to an edit box while it has the focus.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app {

// The edit control that has the focus, or null.
HWND FocusedEdit();

}  // namespace app
