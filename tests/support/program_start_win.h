// Starts Sumwright.exe, for ./run and for every test of the real window.
//
// Under Wine a start can come to nothing, seldom and only on a busy machine: the process is not
// made, or ends, or shows no window. So a start that shows none in time is ended and made again.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

namespace swr::testing {

struct ProgramStart {
  std::u16string program;                 // full path
  std::vector<std::u16string> arguments;  // unquoted
  std::u16string folder;                  // the current folder; the caller's own when empty
  int showCommand = SW_SHOWNORMAL;        // how its window is to be shown
  // Called once the process is made, with its handle and id. With this it is made to be debugged by
  // the thread that starts it (DEBUG_ONLY_THIS_PROCESS), and does nothing before this lets it.
  void (*debug)(HANDLE process, DWORD id) = nullptr;
};

struct StartedProgram {
  HANDLE process = nullptr;  // to be closed by the caller
  DWORD id = 0;
  HWND window = nullptr;  // null when it was not waited for
};

// Tries three times. Throws std::runtime_error with the system's error code when the process can't
// be made.
StartedProgram StartProgram(const ProgramStart& start);

// The main window of this process; null while it has none, or not all of its controls yet.
HWND FindMainWindow(DWORD process);

// Starts the program and waits for its main window, up to three times with growing patience. Says
// on the standard error output what became of a start in vain, and has Wine say there what it finds
// wrong with the next one. Throws std::runtime_error after the last.
StartedProgram StartProgramWithWindow(const ProgramStart& start);

}  // namespace swr::testing
