// Starts Sumwright.exe, for ./run and for every test of the real window.
//
// Under Wine, on a busy machine, a start sometimes fails: the process is not created, or ends, or
// shows no window. So a process that shows no window in time is ended and started again.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

namespace swr::testing {

struct ProgramStart {
  std::u16string program;                 // full path
  std::vector<std::u16string> arguments;  // unquoted
  std::u16string folder;                  // the current folder; the caller's own when empty
  int showCommand = SW_SHOWNORMAL;        // how to show its window
  // Called once the process is created, with its handle and id. If set, the process is debugged by
  // the thread that starts it (DEBUG_ONLY_THIS_PROCESS), and does not run until this function lets
  // it.
  void (*debug)(HANDLE process, DWORD id) = nullptr;
};

struct StartedProgram {
  HANDLE process = nullptr;  // owned by the caller
  DWORD id = 0;
  HWND window = nullptr;  // null when it was not waited for
};

// Tries three times. Throws std::runtime_error with the system's error code when the process can't
// be created.
StartedProgram StartProgram(const ProgramStart& start);

// The main window of this process; null until it exists with all its controls.
HWND FindMainWindow(DWORD process);

// Starts the program and waits for its main window, up to three times with increasing timeouts.
// Reports a failed start on standard error, and turns on Wine's error messages for the next one.
// Throws std::runtime_error after the last.
StartedProgram StartProgramWithWindow(const ProgramStart& start);

}  // namespace swr::testing
