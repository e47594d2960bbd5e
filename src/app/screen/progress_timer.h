// The timer that drives the display of progress.
#pragma once

namespace app {

// Implemented by the dialog and by the tests. Called on the window's thread.
class ProgressTimer {
 public:
  virtual ~ProgressTimer() = default;

  // From here on ProgressDisplay::OnTimer is called every 200 ms until the timer is stopped.
  virtual void StartProgressTimer() = 0;
  virtual void StopProgressTimer() = 0;
};

}  // namespace app
