#include "app/desktop/shell_win.h"

#include <shellapi.h>
#include <shlobj.h>

#include <array>

#include "app/system/window_handles_win.h"
#include "swr/paths/path_forms.h"
#include "swr/system/wide_text_win.h"

namespace app {
void OpenWithShell(const std::u16string& target) {
  ShellExecuteW(nullptr, L"open", swr::AsWide(target), nullptr, nullptr, SW_SHOWNORMAL);
}

void WindowsShell::OpenAddress(const std::u16string& address) { OpenWithShell(address); }

void WindowsShell::OpenFolder(const std::u16string& folder) { OpenWithShell(folder); }

void WindowsShell::ShowInFolder(const std::u16string& path, const std::u16string& folder) {
  const ItemIdList item(ILCreateFromPathW(swr::AsWide(path)));
  if (!item) {
    // A name in a checksum file can make any file appear as the folder of a row, and the shell
    // would run that file if it were a program.
    if (swr::IsDirectoryPath(folder)) OpenWithShell(folder);
    return;
  }
  SHOpenFolderAndSelectItems(item.Get(), 0, nullptr, 0);
}

void WindowsShell::OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) {
  std::array<wchar_t, 260> systemFolder = {};
  GetSystemDirectoryW(systemFolder.data(), systemFolder.size());
  const std::u16string prompt = swr::FromWide(systemFolder.data()) + u"\\cmd.exe";
  ShellExecuteW(owner_, L"open", swr::AsWide(prompt), swr::AsWide(u"/K " + command),
                swr::AsWide(folder), SW_SHOWNORMAL);
}

}  // namespace app
