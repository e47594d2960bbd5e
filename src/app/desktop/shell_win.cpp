#include "app/desktop/shell_win.h"

#include <shellapi.h>
#include <shlobj.h>

#include <array>

#include "swr/paths/path_forms.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

struct ItemListTraits {
  using Value = PIDLIST_ABSOLUTE;
  static constexpr PIDLIST_ABSOLUTE Invalid = nullptr;
  static void Close(PIDLIST_ABSOLUTE value) noexcept { ILFree(value); }
};

}  // namespace

void OpenWithShell(const std::u16string& target) {
  ShellExecuteW(nullptr, L"open", swr::AsWide(target), nullptr, nullptr, SW_SHOWNORMAL);
}

void ShowInFileManager(const std::u16string& path, const std::u16string& folder) {
  const swr::UniqueHandle<ItemListTraits> item(ILCreateFromPathW(swr::AsWide(path)));
  if (!item) {
    // A listed name can call any file a folder, a program too, which the shell would run.
    if (swr::IsDirectoryPath(folder)) OpenWithShell(folder);
    return;
  }
  SHOpenFolderAndSelectItems(item.Get(), 0, nullptr, 0);
}

void OpenCommandPrompt(HWND owner, const std::u16string& folder, const std::u16string& command) {
  std::array<wchar_t, 260> systemFolder = {};
  GetSystemDirectoryW(systemFolder.data(), systemFolder.size());
  const std::u16string prompt = swr::FromWide(systemFolder.data()) + u"\\cmd.exe";
  ShellExecuteW(owner, L"open", swr::AsWide(prompt), swr::AsWide(u"/K " + command),
                swr::AsWide(folder), SW_SHOWNORMAL);
}

}  // namespace app
