// What the window's decisions ask of the desktop around it.
#pragma once

#include <string>
#include <vector>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread.
class Desktop {
 public:
  virtual ~Desktop() = default;

  // Full paths of the files or the folder chosen; empty when the user cancelled.
  virtual std::vector<std::u16string> PickFiles(const std::u16string& title) = 0;
  virtual std::vector<std::u16string> PickFolder(const std::u16string& title) = 0;

  // The progress timer calls MainWindow::OnProgressTimer every 200 ms until it is stopped.
  virtual void StartProgressTimer() = 0;
  virtual void StopProgressTimer() = 0;

  // Shows the wait cursor from one call to the other. Not nested.
  virtual void BeginWait() = 0;
  virtual void EndWait() = 0;

  virtual void CloseWindow() = 0;
};

}  // namespace app
