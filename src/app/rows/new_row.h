// Makes the row of a file that comes into the list.
#pragma once

#include <string>

#include "app/rows/row.h"

namespace app {

// The row of a path, with the file's size and time. When the file can't be examined, the row is
// born failed. The row has no id yet.
Row NewRow(const std::u16string& path);

}  // namespace app
