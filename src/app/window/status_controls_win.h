// The controls of the status line and the progress, and the taskbar button.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/taskbar_progress_win.h"
#include "app/screen/status_view.h"

namespace app {

class StatusControls final : public StatusView {
 public:
  void Attach(HWND dialog);
  // Call when the shell has created the window's taskbar button.
  void ConnectTaskbar() { taskbar_.Connect(dialog_); }
  // Call before COM is shut down.
  void ReleaseTaskbar() { taskbar_.Release(); }

  void SetStatusText(const std::u16string& text) override;
  void ShowProgress(const std::optional<ProgressFigures>& figures) override;

 private:
  HWND dialog_ = nullptr;
  std::u16string text_;
  TaskbarProgress taskbar_;
};

}  // namespace app
