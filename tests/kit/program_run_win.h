// Runs a test program with a time limit, delivers its output line by line, and leaves none of its
// processes running.
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
  std::wstring arguments;  // command line without the program
  std::wstring folder;     // the current folder
  // Added to those of this process.
  std::vector<std::pair<std::wstring, std::wstring>> environment;
  std::chrono::milliseconds limit{};
  // Called on a separate thread for each line of standard output and error, without its line end.
  std::function<void(std::string_view line)> onLine = [](std::string_view) {};
};

enum class RunEnd { Exited, TimedOut, Stopped, NotStarted };

struct RunOutcome {
  RunEnd end = RunEnd::NotStarted;
  DWORD code = 0;  // the exit code, or why the program was not started
  double seconds = 0;
};

// Ends all processes that the program started when it ends. Waits until the program has ended, its
// time is up, or the event `stop` is set.
RunOutcome RunProgram(const ProgramRun& run, HANDLE stop);

// "It crashed (0xC0000005)." and so on; empty for a program that ended with code 0 or 1.
std::string ProblemOf(const RunOutcome& outcome);

}  // namespace kit
