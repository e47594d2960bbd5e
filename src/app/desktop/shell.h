// What the program asks the shell to open.
#pragma once

#include <string>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread. Failures are silent.
class Shell {
 public:
  virtual ~Shell() = default;

  // Opens a web address with the user's browser.
  virtual void OpenAddress(const std::u16string& address) = 0;
  // Opens a folder with the file manager.
  virtual void OpenFolder(const std::u16string& folder) = 0;
  // Opens a command prompt in this folder that runs the command and stays open.
  virtual void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) = 0;
  // Opens the file's folder with the file selected; if that fails, opens `folder`, provided it is a
  // folder.
  virtual void ShowInFolder(const std::u16string& path, const std::u16string& folder) = 0;
};

}  // namespace app
