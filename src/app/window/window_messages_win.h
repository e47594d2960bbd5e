// The messages and timers that the main window sends itself or receives from the program's threads.
// Other processes see the numbers, so they must not change.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app {

inline constexpr UINT WM_APP_DPI_RELAYOUT = 32769;
inline constexpr UINT WM_APP_JOBS_FINISHED = 32778;     // finished jobs are waiting
inline constexpr UINT WM_APP_HASH_PROGRESS = 32779;     // more bytes were read
inline constexpr UINT WM_APP_SIGNATURE_RESULT = 32780;  // lParam owns a SignatureMessage
inline constexpr UINT WM_APP_FILES_FOUND = 32781;       // looked-up files can be taken
inline constexpr UINT WM_APP_ORIGINS_READ = 32782;      // late download origins can be taken

inline constexpr UINT_PTR IDT_PROGRESS = 1;
inline constexpr UINT ProgressInterval = 200;  // ms
inline constexpr UINT_PTR IDT_FINISHED_JOBS = 2;
inline constexpr UINT FinishedJobsInterval = 15;  // ms
inline constexpr UINT_PTR IDT_FOUND_FILES = 3;
inline constexpr UINT FoundFilesInterval = 15;  // ms

}  // namespace app
