#include "app/install/install_system_win.h"

#include "swr/system/windows_api_win.h"

#include <objbase.h>
#include <objidl.h>
#include <shlobj.h>

#include <array>

#include "app/system/window_handles_win.h"
#include "swr/system/handles_win.h"
#include "swr/system/system_library_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr DWORD LongestPath = 32768;     // code units, with the terminator
constexpr size_t LongestValue = 2048;    // likewise, for a registry value
constexpr int LongestLinkTarget = 1040;  // likewise, for the target of a link

// Initialises COM for a scope, whether or not the thread has done so already.
class ComScope {
 public:
  ComScope()
      : entered_(
            SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;
  ~ComScope() {
    if (entered_) CoUninitialize();
  }

 private:
  bool entered_;
};

// A shell link, with its interface for loading and saving.
struct ShellLink {
  ComPointer<IShellLinkW> link;
  ComPointer<IPersistFile> file;

  static std::optional<ShellLink> Make() {
    IShellLinkW* link = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(&link)))) {
      return std::nullopt;
    }
    ShellLink made;
    made.link.Reset(link);
    IPersistFile* file = nullptr;
    if (FAILED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file)))) {
      return std::nullopt;
    }
    made.file.Reset(file);
    return made;
  }
};

REGSAM ViewFlag(RegistryView view) {
  switch (view) {
    case RegistryView::Bits64:
      return KEY_WOW64_64KEY;
    case RegistryView::Bits32:
      return KEY_WOW64_32KEY;
    case RegistryView::Own:
      break;
  }
  return 0;
}

}  // namespace

std::u16string WindowsInstallSystem::ProgramPath() {
  std::wstring path(LongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), LongestPath));
  return swr::FromWide(path);
}

bool WindowsInstallSystem::RunsFromPackage() {
  // There are no packages before Windows 8.
  LONG(WINAPI * getName)
  (UINT32*, PWSTR) = swr::FindLoadedFunction(L"kernel32.dll", "GetCurrentPackageFullName");
  UINT32 length = 0;
  return getName != nullptr && getName(&length, nullptr) == ERROR_INSUFFICIENT_BUFFER;
}

bool WindowsInstallSystem::Exists(const std::u16string& path) {
  return GetFileAttributesW(swr::AsWide(path)) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::u16string> WindowsInstallSystem::ReadRegistryText(RegistryHive hive,
                                                                     RegistryView view,
                                                                     const std::u16string& key,
                                                                     const std::u16string& name) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(hive == RegistryHive::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE,
                    swr::AsWide(key), 0, KEY_READ | ViewFlag(view), &opened) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  const swr::RegistryKey closer(opened);
  std::array<wchar_t, LongestValue> text;
  DWORD size = sizeof text;
  // This call adds the terminator that the value may lack.
  if (RegGetValueW(opened, nullptr, swr::AsWide(name), RRF_RT_REG_SZ, nullptr, text.data(),
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return swr::FromWide(text.data());
}

uint32_t WindowsInstallSystem::WriteRegistryText(const std::u16string& key,
                                                 const std::u16string& name,
                                                 const std::u16string& text) {
  return static_cast<uint32_t>(
      RegSetKeyValueW(HKEY_CURRENT_USER, swr::AsWide(key), swr::AsWide(name), REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(char16_t))));
}

uint32_t WindowsInstallSystem::DeleteRegistryTree(const std::u16string& key) {
  return static_cast<uint32_t>(RegDeleteTreeW(HKEY_CURRENT_USER, swr::AsWide(key)));
}

void WindowsInstallSystem::AnnounceEntryChange() {
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

std::optional<std::u16string> WindowsInstallSystem::SendToFolder() {
  wchar_t* folder = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_SendTo, 0, nullptr, &folder);
  const swr::TaskText closer(folder);
  if (FAILED(result) || folder == nullptr) return std::nullopt;
  return swr::FromWide(folder);
}

std::optional<std::u16string> WindowsInstallSystem::ReadLinkTarget(const std::u16string& linkPath) {
  const ComScope com;
  const auto shellLink = ShellLink::Make();
  if (!shellLink || FAILED(shellLink->file.Get()->Load(swr::AsWide(linkPath), STGM_READ))) {
    return std::nullopt;
  }
  std::array<wchar_t, LongestLinkTarget> target = {};
  if (FAILED(shellLink->link.Get()->GetPath(target.data(), LongestLinkTarget, nullptr,
                                            SLGP_RAWPATH))) {
    return std::nullopt;
  }
  return swr::FromWide(target.data());
}

bool WindowsInstallSystem::WriteLink(const std::u16string& linkPath, const std::u16string& target,
                                     const std::u16string& description) {
  const ComScope com;
  const auto shellLink = ShellLink::Make();
  if (!shellLink) return false;
  IShellLinkW& link = *shellLink->link.Get();
  return SUCCEEDED(link.SetPath(swr::AsWide(target))) &&
         SUCCEEDED(link.SetIconLocation(swr::AsWide(target), 0)) &&
         SUCCEEDED(link.SetDescription(swr::AsWide(description))) &&
         SUCCEEDED(shellLink->file.Get()->Save(swr::AsWide(linkPath), TRUE));
}

uint32_t WindowsInstallSystem::RemoveFile(const std::u16string& path) {
  return DeleteFileW(swr::AsWide(path)) ? ERROR_SUCCESS : GetLastError();
}

}  // namespace app
