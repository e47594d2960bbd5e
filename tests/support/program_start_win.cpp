#include "tests/support/program_start_win.h"

#include <cstdio>
#include <stdexcept>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace swr::testing {
namespace {

constexpr DWORD pollInterval = 10;                      // milliseconds
constexpr DWORD timeouts[] = {15'000, 30'000, 60'000};  // milliseconds, of each start

// Quotes one argument for the program's runtime: backslashes are special only before a quote.
std::wstring Quoted(const std::u16string& argument) {
  std::wstring text = L"\"";
  size_t backslashes = 0;
  for (const char16_t unit : argument) {
    if (unit == u'"') text.append(backslashes + 1, L'\\');
    backslashes = unit == u'\\' ? backslashes + 1 : 0;
    text += static_cast<wchar_t>(unit);
  }
  return text.append(backslashes, L'\\') + L'"';
}

struct Search {
  DWORD process = 0;
  HWND found = nullptr;
};

BOOL CALLBACK StopAtMainWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner != search.process) return TRUE;
  wchar_t name[16] = {};
  wchar_t title[16] = {};
  GetClassNameW(window, name, 16);
  GetWindowTextW(window, title, 16);
  // The window can be found before its last control is created.
  if (std::wstring_view(name) != L"#32770" || std::wstring_view(title) != L"Sumwright" ||
      GetDlgItem(window, IDC_LINKS) == nullptr) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

// "no window", or how the process ended; empty when the window is shown.
std::string WaitForWindow(StartedProgram& program, DWORD milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    const bool hasEnded = WaitForSingleObject(program.process, pollInterval) == WAIT_OBJECT_0;
    program.window = FindMainWindow(program.id);
    if (program.window != nullptr) return {};
    if (hasEnded) {
      DWORD code = 0;
      GetExitCodeProcess(program.process, &code);
      return "it ended with exit code " + std::to_string(code);
    }
    if (GetTickCount64() > end) {
      return "no window after " + std::to_string(milliseconds / 1000) + " s";
    }
  }
}

void End(const StartedProgram& program) {
  TerminateProcess(program.process, 99);
  WaitForSingleObject(program.process, 10'000);
  CloseHandle(program.process);
}

void Report(const std::string& failure) {
  std::fprintf(stderr, "the program did not start: %s\n", failure.c_str());
  std::fflush(stderr);
}

// Turns on Wine's error messages, which are off by default, for the processes started from now on.
void TurnOnWineErrors() { SetEnvironmentVariableW(L"WINEDEBUG", L"fixme-all"); }

}  // namespace

StartedProgram StartProgram(const ProgramStart& start) {
  std::wstring commandLine = Quoted(start.program);
  for (const std::u16string& argument : start.arguments) commandLine += L' ' + Quoted(argument);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  // Without standard handles: otherwise the program would keep the pipe of the caller's output
  // open.
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.wShowWindow = static_cast<WORD>(start.showCommand);
  const DWORD flags = start.debug != nullptr ? DEBUG_ONLY_THIS_PROCESS : 0;
  const wchar_t* folder = start.folder.empty() ? nullptr : AsWide(start.folder);
  DWORD error = 0;
  for (int attempt = 0; attempt < 3; ++attempt) {
    PROCESS_INFORMATION made = {};
    if (CreateProcessW(AsWide(start.program), commandLine.data(), nullptr, nullptr, FALSE, flags,
                       nullptr, folder, &startup, &made)) {
      if (start.debug != nullptr) start.debug(made.hProcess, made.dwProcessId);
      CloseHandle(made.hThread);
      return {.process = made.hProcess, .id = made.dwProcessId};
    }
    error = GetLastError();
    Report("error " + std::to_string(error));
    Sleep(500);
  }
  throw std::runtime_error("the program can't be started, error " + std::to_string(error) +
                           "; is its path right?");
}

HWND FindMainWindow(DWORD process) {
  Search search{.process = process};
  EnumWindows(StopAtMainWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

StartedProgram StartProgramWithWindow(const ProgramStart& start) {
  std::string failure;
  for (const DWORD milliseconds : timeouts) {
    StartedProgram program = StartProgram(start);
    failure = WaitForWindow(program, milliseconds);
    if (failure.empty()) return program;
    End(program);
    Report(failure);
    TurnOnWineErrors();
  }
  throw std::runtime_error("the program shows no window: " + failure);
}

}  // namespace swr::testing
