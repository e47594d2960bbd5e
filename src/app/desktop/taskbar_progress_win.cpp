#include "app/desktop/taskbar_progress_win.h"

namespace app {

void TaskbarProgress::Connect(HWND window) {
  if (taskbar_) return;
  window_ = window;
  void* made = nullptr;
  if (SUCCEEDED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                                 IID_ITaskbarList3, &made))) {
    taskbar_.Reset(static_cast<ITaskbarList3*>(made));
  }
}

void TaskbarProgress::Show(uint64_t done, uint64_t total) {
  if (!taskbar_) return;
  taskbar_.Get()->SetProgressState(window_, TBPF_NORMAL);
  taskbar_.Get()->SetProgressValue(window_, done, total);
}

void TaskbarProgress::Hide() {
  if (taskbar_) taskbar_.Get()->SetProgressState(window_, TBPF_NOPROGRESS);
}

}  // namespace app
