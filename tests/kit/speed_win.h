// How long Sumwright takes to hash a file beside the two tools that every Windows has.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/kit/report.h"

namespace kit {

// Makes a file of `megabytes` in the folder and measures on it, each command three times in turn;
// the median counts. Ours is hash_file, which hashes as the program does. A row has a
// problem when a command is missing, fails, or gives another digest.
std::vector<SpeedRow> MeasureSpeed(const std::wstring& tool, const std::wstring& folder,
                                   unsigned megabytes, HANDLE stop);

}  // namespace kit
