#include "tests/ui/shell_state_win.h"

#include <objbase.h>
#include <objidl.h>
#include <shlobj.h>

#include <stdexcept>

#include "app/system/window_handles_win.h"
#include "swr/system/wide_text_win.h"

namespace app::testing {

std::optional<std::u16string> RegistryText(HKEY hive, const std::u16string& key,
                                           const std::u16string& name) {
  wchar_t text[2048] = {};
  DWORD size = sizeof text;
  if (RegGetValueW(hive, swr::AsWide(key), swr::AsWide(name), RRF_RT_REG_SZ, nullptr, text,
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return swr::FromWide(text);
}

void SetRegistryText(HKEY hive, const std::u16string& key, const std::u16string& name,
                     const std::u16string& text) {
  if (RegSetKeyValueW(hive, swr::AsWide(key), swr::AsWide(name), REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(char16_t))) != ERROR_SUCCESS) {
    throw std::runtime_error("a registry value can't be written");
  }
}

void DeleteRegistryKey(HKEY hive, const std::u16string& key) {
  RegDeleteTreeW(hive, swr::AsWide(key));
}

std::u16string SendToLinkPath() {
  wchar_t* folder = nullptr;
  if (FAILED(SHGetKnownFolderPath(FOLDERID_SendTo, 0, nullptr, &folder))) {
    throw std::runtime_error("there is no Send To folder");
  }
  const std::u16string path = swr::FromWide(folder) + u"\\Sumwright.lnk";
  CoTaskMemFree(folder);
  return path;
}

std::optional<LinkContent> ReadSendToLink() {
  CoInitialize(nullptr);
  IShellLinkW* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                              reinterpret_cast<void**>(&made)))) {
    throw std::runtime_error("shell links are not available");
  }
  const ComPointer<IShellLinkW> link(made);
  IPersistFile* loader = nullptr;
  if (FAILED(made->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&loader)))) {
    throw std::runtime_error("shell links can't be loaded");
  }
  const ComPointer<IPersistFile> file(loader);
  if (FAILED(loader->Load(swr::AsWide(SendToLinkPath()), STGM_READ))) return std::nullopt;
  wchar_t target[1040] = {};
  wchar_t description[1040] = {};
  wchar_t icon[1040] = {};
  LinkContent content;
  made->GetPath(target, 1040, nullptr, SLGP_RAWPATH);
  made->GetDescription(description, 1040);
  made->GetIconLocation(icon, 1040, &content.iconIndex);
  content.target = swr::FromWide(target);
  content.description = swr::FromWide(description);
  content.icon = swr::FromWide(icon);
  return content;
}

}  // namespace app::testing
