// Makes a process believe that it runs from a package, on a system without packages.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app::testing {

// Waits until a process that was started for debugging (DEBUG_ONLY_THIS_PROCESS) has loaded its
// libraries, replaces the system's answer about packages in it, and detaches from it. Called on the
// thread that started it. Throws std::runtime_error when that can't be done.
void AnswerFromPackage(HANDLE process, DWORD processId);

}  // namespace app::testing
