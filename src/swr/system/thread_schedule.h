// How the scheduler treats a thread.
#pragma once

namespace swr {

// Says that the calling thread works in long stretches: when it wakes up it waits for its turn and
// does not push another thread off its processor. Without effect where the system has no such way.
void PreferThroughput() noexcept;

}  // namespace swr
