#include "swr/system/thread_schedule.h"

#include "swr/system/windows_api_win.h"

namespace swr {

// A thread that wakes up is given a higher priority for a while unless that is disabled.
void PreferThroughput() noexcept { SetThreadPriorityBoost(GetCurrentThread(), TRUE); }

}  // namespace swr
