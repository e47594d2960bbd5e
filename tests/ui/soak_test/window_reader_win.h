// Reads a running window for the comparison with the model.
#pragma once

#include <vector>

#include "tests/ui/running_window_win.h"
#include "tests/ui/soak_test/comparison.h"

namespace app::testing {

// Waits until no row is waiting or being hashed, and that stays that way. Throws std::runtime_error
// when it does not happen.
void WaitForStableIdle(const RunningWindow& window);
// Selects each row once, and finally none. The window must be idle.
SeenWindow ReadWindow(const RunningWindow& window);
// Names and folders, with the details of rows whose file is in the list several times.
std::vector<SeenRow> ReadOrder(const RunningWindow& window);
// Brings the window to the front and checks the colours of some rows. Throws Disagreement.
void CheckColours(const RunningWindow& window, const ReferenceWindow& reference);

}  // namespace app::testing
