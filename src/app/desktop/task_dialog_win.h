// The system's task dialogs.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/messages.h"

namespace app {

// Shows the dialog over `owner` until it is closed. Returns the id of the button, or CancelAnswer
// when the dialog can't be shown.
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
