// Reads a running window for its comparison with the model.
#pragma once

#include <vector>

#include "tests/ui/running_window_win.h"
#include "tests/ui/soak_test/comparison.h"

namespace app::testing {

// Waits until nothing is hashed or waits for it, and stays so. Throws std::runtime_error when that
// does not come.
void WaitForRest(const RunningWindow& window);
// Selects each row once, and in the end none. The window must be at rest.
SeenWindow ReadWindow(const RunningWindow& window);
// Names and folders, with the details of rows whose file is there several times.
std::vector<SeenRow> ReadOrder(const RunningWindow& window);
// Brings the window to the front and looks at the colours of some rows. Throws Disagreement.
void CheckColours(const RunningWindow& window, const ReferenceWindow& reference);

}  // namespace app::testing
