// Runs every planned program in turn and collects the results.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/plan.h"
#include "tests/kit/report.h"

namespace kit {

struct SessionFolders {
  std::wstring kit;   // where run-tests.cmd is
  std::wstring work;  // for the files of the tests; exists
};

struct SessionOptions {
  std::vector<PlannedProgram> plan;
  int soakMinutes = 0;
  // For all programs but the soak test. Programs not started by then are not run, and are reported
  // as such.
  int limitSeconds = 0;
  int fileCount = 0;            // for the test with a large folder
  unsigned speedMegabytes = 0;  // 0 to skip measuring speed
};

// Fills in programs, speed and pictures of the report. Ends early when the event `stop` is set.
// Prints its progress on the console.
void RunSession(const SessionFolders& folders, const SessionOptions& options, HANDLE stop,
                Report& report);

}  // namespace kit
