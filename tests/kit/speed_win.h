// Compares how long Sumwright and two tools of Windows take to hash a file.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/report.h"

namespace kit {

// Creates a file of `megabytes` in the folder and runs each command on it three times in turn; the
// result is the median. Our command is hash_file, which hashes as the program does. A row has a
// problem when a command is missing, fails, or prints a different digest.
std::vector<SpeedRow> MeasureSpeed(const std::wstring& tool, const std::wstring& folder,
                                   unsigned megabytes, HANDLE stop);

}  // namespace kit
