#include "tests/support/system_command_win.h"

#include "swr/system/windows_api_win.h"

#include <stdexcept>

namespace swr::testing {

unsigned long RunSystemCommand(const std::wstring& line) {
  constexpr DWORD longest = 60'000;
  wchar_t folder[MAX_PATH] = {};
  GetSystemDirectoryW(folder, MAX_PATH);
  const std::wstring prompt = std::wstring(folder) + L"\\cmd.exe";
  // The command prompt removes the outer quotes and takes the rest literally.
  std::wstring command = L"\"" + prompt + L"\" /d /s /c \"" + line + L"\"";
  STARTUPINFOW startup = {.cb = sizeof startup};
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(prompt.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                      nullptr, nullptr, &startup, &process)) {
    throw std::runtime_error("the command prompt can't be started");
  }
  CloseHandle(process.hThread);
  const DWORD waited = WaitForSingleObject(process.hProcess, longest);
  DWORD code = 1;
  GetExitCodeProcess(process.hProcess, &code);
  if (waited != WAIT_OBJECT_0) TerminateProcess(process.hProcess, 1);
  CloseHandle(process.hProcess);
  if (waited != WAIT_OBJECT_0) throw std::runtime_error("the command does not end");
  return code;
}

}  // namespace swr::testing
