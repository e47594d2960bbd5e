#include "swr/system/system_library_win.h"

#include <delayimp.h>

#include <array>
#include <string>

namespace swr {

void UseSystemLibrariesOnly() {
  // Older systems lack it.
  using Function = BOOL(WINAPI*)(DWORD);
  const auto setDirectories = reinterpret_cast<Function>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
  if (setDirectories != nullptr) setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  // Takes the current folder out of the search.
  SetDllDirectoryW(L"");
}

HMODULE LoadSystemLibrary(const wchar_t* name) {
  std::array<wchar_t, MAX_PATH> folder;
  const UINT length = GetSystemDirectoryW(folder.data(), folder.size());
  if (length == 0 || length >= folder.size()) return nullptr;
  const std::wstring path = std::wstring(folder.data(), length) + L'\\' + name;
  // The libraries that this one needs are looked for beside it.
  return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace swr

namespace {

FARPROC WINAPI OnDelayedLibrary(unsigned notification, PDelayLoadInfo info) {
  if (notification != dliNotePreLoadLibrary) return nullptr;
  std::wstring name;
  for (const char* letter = info->szDll; *letter != '\0'; ++letter) {
    name += static_cast<wchar_t>(*letter);  // these names are ASCII
  }
  const HMODULE library = swr::LoadSystemLibrary(name.c_str());
  // Without an answer the name alone would be looked for.
  if (library == nullptr) ExitProcess(static_cast<UINT>(ERROR_MOD_NOT_FOUND));
  return reinterpret_cast<FARPROC>(library);
}

}  // namespace

extern "C" {
PfnDliHook __pfnDliNotifyHook2 = OnDelayedLibrary;
}
