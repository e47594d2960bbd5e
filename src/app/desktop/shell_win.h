// The shell of Windows.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

#include "app/desktop/shell.h"

namespace app {

// Opens an address with the user's browser, or a folder with the file manager.
void OpenWithShell(const std::u16string& target);

class WindowsShell final : public Shell {
 public:
  // The owner of the shell's message boxes.
  void Attach(HWND owner) { owner_ = owner; }

  void OpenAddress(const std::u16string& address) override;
  void OpenFolder(const std::u16string& folder) override;
  void OpenCommandPrompt(const std::u16string& folder, const std::u16string& command) override;
  void ShowInFolder(const std::u16string& path, const std::u16string& folder) override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace app
