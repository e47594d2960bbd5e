// Makes the row of a file that comes into the list.
#pragma once

#include "app/intake/intake_request.h"
#include "app/rows/row.h"

namespace app {

// The row of a file that was looked up. Without information about the file the row is born failed;
// if the file was not looked up, it is born cancelled. The row has no id yet.
Row NewRow(IntakeFile&& file);

}  // namespace app
