#include "tests/ui/program_process_win.h"

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "swr/system/wide_text_win.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/package_answer_win.h"

namespace app::testing {
namespace {

std::wstring programPath;

std::mutex startedMutex;
std::vector<HANDLE> started;  // under startedMutex

swr::testing::ProgramStart Prepare(const StartOptions& options) {
  if (!options.keepSettings) DeleteSettings();
  return {.program = options.program.empty() ? ProgramUnderTest() : options.program,
          .arguments = options.arguments,
          .folder = options.folder,
          .showCommand = options.minimized ? SW_SHOWMINIMIZED : options.showCommand,
          .debug = options.fromPackage ? AnswerFromPackage : nullptr};
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

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
  const auto end = std::chrono::steady_clock::now() + timeout;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

ProgramProcess::ProgramProcess(const StartOptions& options)
    : ProgramProcess(swr::testing::StartProgram(Prepare(options))) {}

ProgramProcess::ProgramProcess(const swr::testing::StartedProgram& program)
    : process_(program.process), id_(program.id) {
  const std::lock_guard lock(startedMutex);
  started.push_back(process_);
}

ProgramProcess ProgramProcess::WithWindow(const StartOptions& options) {
  return ProgramProcess(swr::testing::StartProgramWithWindow(Prepare(options)));
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

int ProgramProcess::WaitForEnd(std::chrono::milliseconds timeout) const {
  if (WaitForSingleObject(process_, static_cast<DWORD>(timeout.count())) != WAIT_OBJECT_0) {
    throw std::runtime_error("the program does not end");
  }
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return static_cast<int>(code);
}

}  // namespace app::testing
