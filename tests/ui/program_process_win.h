// A process of Sumwright.exe started by a test.
#pragma once

#include "swr/system/windows_api_win.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/program_start_win.h"

namespace app::testing {

struct StartOptions {
  std::vector<std::u16string> arguments;
  std::u16string folder;   // the current folder; the test's own when empty
  std::u16string program;  // another copy of Sumwright.exe; the one under test when empty
  bool minimized = false;
  int showCommand = SW_SHOWNORMAL;  // how to show its window, unless minimized
  bool fromPackage = false;         // as if it were installed from the system's store
  bool keepSettings = false;        // otherwise the program starts without settings
};

// Sets the path of Sumwright.exe. Call once, before any program is started.
void SetProgramPath(const std::string& path);
std::u16string ProgramUnderTest();
// Ends all programs that tests have started and that are still running.
void TerminatePrograms();

// Waits until the condition is true. False if it is not within this time.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds timeout = std::chrono::seconds(30));

class ProgramProcess {
 public:
  // Returns at once. Throws std::runtime_error when the program can't be started.
  explicit ProgramProcess(const StartOptions& options = {});
  // Returns when the main window is shown; starts the program again if it does not appear. Throws
  // std::runtime_error when it never does.
  static ProgramProcess WithWindow(const StartOptions& options = {});
  // Kills the program if it is still running.
  ~ProgramProcess();
  ProgramProcess(ProgramProcess&& other) noexcept;
  ProgramProcess& operator=(ProgramProcess&&) = delete;

  HANDLE Handle() const { return process_; }
  DWORD Id() const { return id_; }
  bool HasEnded() const { return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0; }
  // The exit code. Throws when the program does not end.
  int WaitForEnd(std::chrono::milliseconds timeout = std::chrono::seconds(30)) const;

 private:
  explicit ProgramProcess(const swr::testing::StartedProgram& program);

  HANDLE process_ = nullptr;
  DWORD id_ = 0;
};

}  // namespace app::testing
