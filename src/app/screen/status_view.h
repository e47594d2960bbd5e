// The status line and the progress display.
#pragma once

#include <optional>
#include <string>

#include "app/verdicts/status_line.h"

namespace app {

// Implemented by the dialog's controls and by the tests. Called on the window's thread.
class StatusView {
 public:
  virtual ~StatusView() = default;

  virtual void SetStatusText(const std::u16string& text) = 0;
  // Shows the progress bar, the Cancel button and the progress on the taskbar, or hides them when
  // there are no figures.
  virtual void ShowProgress(const std::optional<ProgressFigures>& figures) = 0;
};

}  // namespace app
