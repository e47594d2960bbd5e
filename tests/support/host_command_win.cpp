#include "tests/support/host_command_win.h"

#include "swr/system/windows_api_win.h"

#include <stdexcept>

#include "swr/system/wide_text_win.h"

namespace swr::testing {
namespace {

constexpr wchar_t Shell[] = L"Z:\\bin\\sh";

}  // namespace

bool CanRunHostCommands() { return GetFileAttributesW(Shell) != INVALID_FILE_ATTRIBUTES; }

void RunHostCommand(const std::wstring& line) {
  std::wstring command = L"sh -c \"" + line + L"\"";
  STARTUPINFOW startup = {.cb = sizeof startup};
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(Shell, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    throw std::runtime_error("the host's shell can't be started, error " +
                             std::to_string(GetLastError()));
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

std::wstring HostPath(const std::u16string& path) {
  std::wstring host = AsWide(path);
  for (wchar_t& unit : host) unit = unit == L'\\' ? L'/' : unit;
  const bool isOfHost = host[0] == L'Z' || host[0] == L'z';
  return (isOfHost ? L"" : L"$WINEPREFIX/drive_c") + (L"'" + host.substr(2) + L"'");
}

}  // namespace swr::testing
