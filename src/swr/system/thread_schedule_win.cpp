#include "swr/system/thread_schedule.h"

#include "swr/system/windows_api_win.h"

namespace swr {

// Disables the temporary priority boost of a thread that wakes up.
void PreferThroughput() noexcept { SetThreadPriorityBoost(GetCurrentThread(), TRUE); }

}  // namespace swr
