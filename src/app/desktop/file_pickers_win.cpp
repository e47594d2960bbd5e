#include "app/desktop/file_pickers_win.h"

#include <shobjidl.h>

#include "app/desktop/com_pointer_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

struct TaskMemoryTraits {
  using Value = wchar_t*;
  static constexpr wchar_t* Invalid = nullptr;
  static void Close(wchar_t* value) noexcept { CoTaskMemFree(value); }
};

std::vector<std::u16string> PathsOf(IShellItemArray& items) {
  std::vector<std::u16string> paths;
  DWORD count = 0;
  items.GetCount(&count);
  for (DWORD i = 0; i < count; ++i) {
    IShellItem* found = nullptr;
    if (FAILED(items.GetItemAt(i, &found))) continue;
    const ComPointer<IShellItem> item(found);
    wchar_t* text = nullptr;
    if (FAILED(item.Get()->GetDisplayName(SIGDN_FILESYSPATH, &text))) continue;
    const swr::UniqueHandle<TaskMemoryTraits> memory(text);
    paths.push_back(swr::FromWide(memory.Get()));
  }
  return paths;
}

}  // namespace

std::vector<std::u16string> PickPaths(HWND owner, const std::u16string& title, PickKind kind) {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IFileOpenDialog, &made))) {
    return {};
  }
  const ComPointer<IFileOpenDialog> dialog(static_cast<IFileOpenDialog*>(made));
  FILEOPENDIALOGOPTIONS options = 0;
  dialog.Get()->GetOptions(&options);
  options |= FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR;
  options |= kind == PickKind::Folder ? FOS_PICKFOLDERS : FOS_ALLOWMULTISELECT | FOS_FILEMUSTEXIST;
  dialog.Get()->SetOptions(options);
  dialog.Get()->SetTitle(swr::AsWide(title));
  if (FAILED(dialog.Get()->Show(owner))) return {};
  IShellItemArray* results = nullptr;
  if (FAILED(dialog.Get()->GetResults(&results))) return {};
  const ComPointer<IShellItemArray> items(results);
  return PathsOf(*items.Get());
}

}  // namespace app
