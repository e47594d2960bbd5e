// The system's dialogs for choosing files and folders to read, and a file to save to.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>
#include <vector>

#include "app/desktop/desktop.h"

namespace app {

enum class PickKind { Files, Folder };

// Shows the dialog over `owner`. Full paths of what was chosen; empty when the user cancelled or
// the dialog failed. No filters is no choice of file types.
std::vector<std::u16string> PickPaths(HWND owner, const std::u16string& title, PickKind kind,
                                      const std::vector<FileFilter>& filters);

// Nothing when the user cancelled or the dialog failed.
std::optional<SaveTarget> PickTarget(HWND owner, const SaveRequest& request);

}  // namespace app
