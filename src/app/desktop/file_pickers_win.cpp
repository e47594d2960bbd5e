#include "app/desktop/file_pickers_win.h"

#include <shobjidl.h>

#include "app/system/window_handles_win.h"
#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

template <typename Interface>
ComPointer<Interface> MakeDialog(const CLSID& classId, const IID& interfaceId) {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, &made))) {
    return {};
  }
  return ComPointer<Interface>(static_cast<Interface*>(made));
}

void AddOptions(IFileDialog& dialog, FILEOPENDIALOGOPTIONS added) {
  FILEOPENDIALOGOPTIONS options = 0;
  dialog.GetOptions(&options);
  dialog.SetOptions(options | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR | added);
}

void SetFilters(IFileDialog& dialog, const std::vector<FileFilter>& filters) {
  if (filters.empty()) return;
  std::vector<COMDLG_FILTERSPEC> specs;
  for (const FileFilter& filter : filters) {
    specs.push_back({swr::AsWide(filter.label), swr::AsWide(filter.pattern)});
  }
  dialog.SetFileTypes(static_cast<UINT>(specs.size()), specs.data());
}

std::optional<std::u16string> PathOf(IShellItem& item) {
  wchar_t* text = nullptr;
  if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &text))) return std::nullopt;
  const swr::TaskText memory(text);
  return swr::FromWide(memory.Get());
}

std::vector<std::u16string> PathsOf(IShellItemArray& items) {
  std::vector<std::u16string> paths;
  DWORD count = 0;
  items.GetCount(&count);
  for (DWORD i = 0; i < count; ++i) {
    IShellItem* found = nullptr;
    if (FAILED(items.GetItemAt(i, &found))) continue;
    const ComPointer<IShellItem> item(found);
    if (auto path = PathOf(*item.Get())) paths.push_back(*std::move(path));
  }
  return paths;
}

void OpenIn(IFileDialog& dialog, const std::u16string& folder) {
  void* made = nullptr;
  if (FAILED(SHCreateItemFromParsingName(swr::AsWide(folder), nullptr, IID_IShellItem, &made))) {
    return;
  }
  const ComPointer<IShellItem> item(static_cast<IShellItem*>(made));
  dialog.SetFolder(item.Get());
}

enum class PickKind { Files, Folder };

std::vector<std::u16string> PickPaths(HWND owner, const std::u16string& title, PickKind kind,
                                      const std::vector<FileFilter>& filters) {
  const auto dialog = MakeDialog<IFileOpenDialog>(CLSID_FileOpenDialog, IID_IFileOpenDialog);
  if (!dialog) return {};
  AddOptions(*dialog.Get(),
             kind == PickKind::Folder ? FOS_PICKFOLDERS : FOS_ALLOWMULTISELECT | FOS_FILEMUSTEXIST);
  dialog.Get()->SetTitle(swr::AsWide(title));
  SetFilters(*dialog.Get(), filters);
  if (FAILED(dialog.Get()->Show(owner))) return {};
  IShellItemArray* results = nullptr;
  if (FAILED(dialog.Get()->GetResults(&results))) return {};
  const ComPointer<IShellItemArray> items(results);
  return PathsOf(*items.Get());
}

}  // namespace

std::vector<std::u16string> FilePickers::PickFiles(const std::u16string& title,
                                                   const std::vector<FileFilter>& filters) {
  return PickPaths(owner_, title, PickKind::Files, filters);
}

std::vector<std::u16string> FilePickers::PickFolder(const std::u16string& title) {
  return PickPaths(owner_, title, PickKind::Folder, {});
}

std::optional<SaveTarget> FilePickers::PickSaveTarget(const SaveRequest& request) {
  const auto dialog = MakeDialog<IFileSaveDialog>(CLSID_FileSaveDialog, IID_IFileSaveDialog);
  if (!dialog) return std::nullopt;
  SetFilters(*dialog.Get(), request.filters);
  dialog.Get()->SetFileTypeIndex(static_cast<UINT>(request.filter) + 1);  // counted from 1
  dialog.Get()->SetDefaultExtension(swr::AsWide(request.defaultExtension));
  dialog.Get()->SetFileName(swr::AsWide(request.fileName));
  OpenIn(*dialog.Get(), request.folder);
  dialog.Get()->SetTitle(swr::AsWide(request.title));
  AddOptions(*dialog.Get(), FOS_OVERWRITEPROMPT);
  if (FAILED(dialog.Get()->Show(owner_))) return std::nullopt;
  IShellItem* result = nullptr;
  if (FAILED(dialog.Get()->GetResult(&result))) return std::nullopt;
  const ComPointer<IShellItem> item(result);
  const std::optional<std::u16string> path = PathOf(*item.Get());
  UINT filter = 1;
  dialog.Get()->GetFileTypeIndex(&filter);
  if (!path || filter < 1) return std::nullopt;
  return SaveTarget{.path = *path, .filter = filter - 1};
}

}  // namespace app
