// The run itself: every planned program, one after the other, and what each of them found.
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
  // For all programs but the soak test. What has not begun by then does not run, and says so.
  int limitSeconds = 0;
  int fileCount = 0;            // of the test with a large folder
  unsigned speedMegabytes = 0;  // 0 for no measuring of speed
};

// Fills in programs, speed and pictures of the report. Ends early when the event `stop` is set.
// Prints on the console what is under way.
void RunSession(const SessionFolders& folders, const SessionOptions& options, HANDLE stop,
                Report& report);

}  // namespace kit
