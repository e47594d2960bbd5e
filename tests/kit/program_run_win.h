// Runs one program of tests to its end, or ends it: with its output line by line, a time limit, and
// nothing of it left behind.
#pragma once

#include "swr/system/windows_api_win.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kit {

struct ProgramRun {
  std::wstring program;    // a full path
  std::wstring arguments;  // as on a command line, without the program
  std::wstring folder;     // the current folder
  // Added to those of this process.
  std::vector<std::pair<std::wstring, std::wstring>> environment;
  std::chrono::milliseconds limit{};
  // Called on a thread of its own, for each line of standard output and error, without its end.
  std::function<void(std::string_view line)> onLine = [](std::string_view) {};
};

enum class RunEnd { Exited, TimedOut, Stopped, NotStarted };

struct RunOutcome {
  RunEnd end = RunEnd::NotStarted;
  DWORD code = 0;  // the exit code, or why the program was not started
  double seconds = 0;
};

// All processes that the program starts end with it. Waits until the program has ended, its time is
// over, or the event `stop` is set.
RunOutcome RunProgram(const ProgramRun& run, HANDLE stop);

// "It crashed (0xC0000005)." and so on; empty for a program that ended with code 0 or 1.
std::string ProblemOf(const RunOutcome& outcome);

}  // namespace kit
