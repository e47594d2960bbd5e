#include "swr/system/system_library_win.h"

#include <array>
#include <string>

namespace swr {
namespace {

HMODULE LoadSystemLibrary(const wchar_t* name) {
  std::array<wchar_t, MAX_PATH> folder;
  const UINT length = GetSystemDirectoryW(folder.data(), folder.size());
  if (length == 0 || length >= folder.size()) return nullptr;
  const std::wstring path = std::wstring(folder.data(), length) + L'\\' + name;
  // The library's own dependencies are searched for in its folder. LOAD_LIBRARY_SEARCH_SYSTEM32
  // would do the same, but fails on Windows 7 without its update of 2011.
  return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

void UseSystemLibrariesOnly() {
  // Missing on older systems.
  BOOL(WINAPI * setDirectories)
  (DWORD) = FindLoadedFunction(L"kernel32.dll", "SetDefaultDllDirectories");
  if (setDirectories != nullptr) setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  // Removes the current folder from the search.
  SetDllDirectoryW(L"");
}

SystemFunction FindSystemFunction(const wchar_t* library, const char* name) {
  const HMODULE module = LoadSystemLibrary(library);
  return SystemFunction(module == nullptr ? nullptr : GetProcAddress(module, name));
}

SystemFunction FindLoadedFunction(const wchar_t* library, const char* name) {
  const HMODULE module = GetModuleHandleW(library);
  return SystemFunction(module == nullptr ? nullptr : GetProcAddress(module, name));
}

}  // namespace swr
