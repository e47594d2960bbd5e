#include "tests/ui/program_process_win.h"

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "swr/system/wide_text_win.h"
#include "tests/ui/desktop_state_win.h"

namespace app::testing {
namespace {

std::wstring programPath;

std::mutex startedMutex;
std::vector<HANDLE> started;  // under startedMutex

// One argument as the program's runtime will read it: backslashes count only before a quote.
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

// On a busy machine Wine fails to start a process once in a great while, so it is tried again, and
// said.
PROCESS_INFORMATION Start(const std::u16string& program, std::wstring commandLine,
                          const StartOptions& options) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = options.minimized ? SW_SHOWMINIMIZED : SW_SHOWNORMAL;
  constexpr int attempts = 3;
  DWORD error = 0;
  for (int i = 0; i < attempts; ++i) {
    PROCESS_INFORMATION made = {};
    if (CreateProcessW(swr::AsWide(program), commandLine.data(), nullptr, nullptr, FALSE, 0,
                       nullptr, options.folder.empty() ? nullptr : swr::AsWide(options.folder),
                       &startup, &made)) {
      return made;
    }
    error = GetLastError();
    std::fprintf(stderr, "the program was not started, error %lu\n", error);
    Sleep(500);
  }
  throw std::runtime_error("the program cannot be started, error " + std::to_string(error) +
                           "; is its path right?");
}

}  // namespace

void SetProgramPath(const std::string& path) {
  const std::wstring given(path.begin(), path.end());
  wchar_t full[32768] = {};
  GetFullPathNameW(given.c_str(), 32768, full, nullptr);
  programPath = full;
}

std::u16string ProgramUnderTest() { return swr::FromWide(programPath); }

void TerminatePrograms() {
  const std::lock_guard lock(startedMutex);
  for (const HANDLE process : started) TerminateProcess(process, 99);
}

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

ProgramProcess::ProgramProcess(const StartOptions& options) {
  if (!options.keepSettings) ForgetSettings();
  const std::u16string program = options.program.empty() ? ProgramUnderTest() : options.program;
  std::wstring commandLine = Quoted(program);
  for (const std::u16string& argument : options.arguments) commandLine += L' ' + Quoted(argument);
  const PROCESS_INFORMATION made = Start(program, std::move(commandLine), options);
  CloseHandle(made.hThread);
  process_ = made.hProcess;
  id_ = made.dwProcessId;
  const std::lock_guard lock(startedMutex);
  started.push_back(process_);
}

ProgramProcess::~ProgramProcess() {
  if (process_ == nullptr) return;
  if (!HasEnded()) TerminateProcess(process_, 99);
  const std::lock_guard lock(startedMutex);
  std::erase(started, process_);
  CloseHandle(process_);
}

ProgramProcess::ProgramProcess(ProgramProcess&& other) noexcept
    : process_(std::exchange(other.process_, nullptr)), id_(other.id_) {}

int ProgramProcess::WaitForEnd(std::chrono::milliseconds patience) const {
  if (WaitForSingleObject(process_, static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0) {
    throw std::runtime_error("the program does not end");
  }
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return static_cast<int>(code);
}

}  // namespace app::testing
