// Scheduling hints for a thread.
#pragma once

namespace swr {

// Declares that the calling thread prefers throughput to latency: when it wakes up, it does not
// preempt another thread. Has no effect where the system offers no such hint.
void PreferThroughput() noexcept;

}  // namespace swr
