// What the About dialog says.
#pragma once

#include <string>

#include "app/desktop/task_dialog.h"

namespace app {

// `locationLine` says where this copy lies and how it came there.
TaskDialogSpec AboutDialog(const std::u16string& locationLine);

}  // namespace app
