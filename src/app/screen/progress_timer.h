// The timer that updates the progress display.
#pragma once

namespace app {

// Implemented by the dialog and by the tests. Called on the window's thread.
class ProgressTimer {
 public:
  virtual ~ProgressTimer() = default;

  // From now on JobIntake::OnTimer is called every 200 ms until the timer is stopped.
  virtual void StartProgressTimer() = 0;
  virtual void StopProgressTimer() = 0;
};

}  // namespace app
