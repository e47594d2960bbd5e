// A library that creates the file "NAME.dll.loaded" in its folder when a process loads it. It
// stands in for a malicious library in the downloads folder that has the name of a system library.
#include "swr/system/windows_api_win.h"

#include <array>
#include <string>

extern "C" BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  std::array<wchar_t, MAX_PATH> path;
  const DWORD length = GetModuleFileNameW(self, path.data(), path.size());
  const std::wstring mark = std::wstring(path.data(), length) + L".loaded";
  CloseHandle(CreateFileW(mark.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  return TRUE;
}
