// Task dialogs of the system.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/messages.h"

namespace app {

// Shows the dialog over `owner` and returns when it is closed: the id of the button, CancelAnswer
// also when the dialog can't be shown.
int ShowTaskDialog(HWND owner, const TaskDialogSpec& spec);

class TaskDialogs final : public Messages {
 public:
  // The window that the dialogs open over.
  void Attach(HWND owner) { owner_ = owner; }

  int ShowTaskDialog(const TaskDialogSpec& spec) override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace app
