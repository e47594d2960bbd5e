// The progress on the window's taskbar button.
#pragma once

#include "swr/system/windows_api_win.h"

#include <shobjidl.h>

#include <cstdint>

#include "app/system/window_handles_win.h"

namespace app {

class TaskbarProgress {
 public:
  // Call when the shell announces the button; before that nothing is shown.
  void Connect(HWND window);
  void Show(uint64_t done, uint64_t total);
  void Hide();
  // Call before COM is shut down.
  void Release() { taskbar_.Reset(); }

 private:
  HWND window_ = nullptr;
  ComPointer<ITaskbarList3> taskbar_;
};

}  // namespace app
