// Converts sizes to pixels at the window's DPI. All sizes in the code are at 96 DPI.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app {

// The DPI of a window. Before Windows 10, which introduced a DPI per window, that of the screen.
int GetDpi(HWND window);

inline int ScaleToDpi(int value, int dpi) { return MulDiv(value, dpi, 96); }
inline int ScaleFromDpi(int value, int dpi) { return MulDiv(value, 96, dpi); }

}  // namespace app
