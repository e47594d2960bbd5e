// Messages and questions to the user.
#pragma once

#include "app/desktop/task_dialog.h"

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread, which keeps handling
// messages while a dialog is open.
class Messages {
 public:
  virtual ~Messages() = default;

  // Returns the id of the button with which the user closed the dialog.
  virtual int ShowTaskDialog(const TaskDialogSpec& spec) = 0;
};

}  // namespace app
