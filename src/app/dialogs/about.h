// The text of the About dialog.
#pragma once

#include <string>

#include "app/desktop/task_dialog.h"

namespace app {

// `locationLine` says where this copy is and how it was installed.
TaskDialogSpec AboutDialog(const std::u16string& locationLine);

}  // namespace app
