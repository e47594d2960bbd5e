// The system's dialogs for choosing files and folders.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

namespace app {

enum class PickKind { Files, Folder };

// Shows the dialog over `owner`. Full paths of what was chosen; empty when the user cancelled or
// the dialog failed.
std::vector<std::u16string> PickPaths(HWND owner, const std::u16string& title, PickKind kind);

}  // namespace app
