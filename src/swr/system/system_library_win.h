// Libraries come from the system's folder and from nowhere else: a program that people start from
// their downloads must not take for a library of Windows what else was downloaded there.
//
// Of the libraries that the program is linked with, those that Windows always takes from its own
// folder are loaded with it. The others (cmake/SystemLibraries.cmake) are loaded when first called,
// by full path; this file does that.
#pragma once

#include "swr/system/windows_api_win.h"

namespace swr {

// The process no longer looks for libraries in the program's folder, the current folder and the
// PATH, as far as the system can be told so (Windows 8, or 7 with its updates). To be called before
// anything that may load one.
void UseSystemLibrariesOnly();

// The library of this name ("wintrust.dll") from the system's folder; nullptr when there is none.
HMODULE LoadSystemLibrary(const wchar_t* name);

}  // namespace swr
