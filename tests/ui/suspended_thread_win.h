// Makes a window hang.
#pragma once

#include "swr/system/windows_api_win.h"

namespace app::testing {

// Suspends the thread of a window, usually one of another process, while the object exists.
class SuspendedThread {
 public:
  explicit SuspendedThread(HWND window)
      : thread_(
            OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(window, nullptr))) {
    SuspendThread(thread_);
  }
  ~SuspendedThread() {
    ResumeThread(thread_);
    CloseHandle(thread_);
  }
  SuspendedThread(const SuspendedThread&) = delete;
  SuspendedThread& operator=(const SuspendedThread&) = delete;

 private:
  HANDLE thread_;
};

}  // namespace app::testing
