// Drives a dialog of the program: the system's file dialogs and message boxes, and the program's
// own dialogs.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <vector>

#include "tests/ui/running_window_win.h"

namespace app::testing {

// The dialog of this process with this title that is not `other`; null when there is none. A file
// dialog is found only once it can accept a name.
HWND FindDialogOf(DWORD process, const std::u16string& title, HWND other = nullptr);

// Throws std::runtime_error when the dialog does not open, does not answer or does not close.
class ProgramDialog {
 public:
  // Waits until the dialog appears.
  ProgramDialog(const RunningWindow& window, const std::u16string& title);

  HWND Handle() const { return dialog_; }
  HWND Control(int id) const { return GetDlgItem(dialog_, id); }
  std::u16string Text(int control) const;
  // In the dialog's client area.
  Rect Place(int control) const;

  // The main instruction and the content of a message box.
  std::u16string Instruction() const;
  std::u16string Content() const;
  // With the markup of its links.
  std::u16string Footer() const;
  // Clicks the link to this address in the texts. Returns at once.
  void FollowLink(const std::u16string& address) const;

  // For file dialogs.
  std::u16string FileName() const;
  void SetFileName(const std::u16string& name) const;
  // The labels of the file types, and the index of the selected one.
  std::vector<std::u16string> FileTypes() const;
  int FileType() const;
  void ChooseFileType(int number) const;

  // Returns when the dialog has closed and the window accepts input again.
  void Press(int button) const;
  // Returns at once.
  void PostPress(int button) const;

 private:
  std::vector<std::u16string> MessageTexts() const;

  const RunningWindow& window_;
  HWND dialog_ = nullptr;
};

}  // namespace app::testing
