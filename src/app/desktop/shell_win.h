// What is handed over to the shell: addresses to the browser, folders to the file manager and to
// the command prompt.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

namespace app {

// Opens an address with the user's browser, or a folder with the file manager.
void OpenWithShell(const std::u16string& target);

// Opens the folder of the file with the file selected; when that fails, `folder` itself if it
// is one.
void ShowInFileManager(const std::u16string& path, const std::u16string& folder);

// Opens the system's command prompt in `folder`, which runs `command` and stays open.
void OpenCommandPrompt(HWND owner, const std::u16string& folder, const std::u16string& command);

}  // namespace app
