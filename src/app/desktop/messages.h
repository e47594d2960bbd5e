// How the program tells its user something, or asks.
#pragma once

#include "app/desktop/task_dialog.h"

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread; while a dialog is
// open, the window goes on handling messages.
class Messages {
 public:
  virtual ~Messages() = default;

  // Returns the id of the button with which the user closed the dialog.
  virtual int ShowTaskDialog(const TaskDialogSpec& spec) = 0;
};

}  // namespace app
