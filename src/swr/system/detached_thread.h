// Threads that nobody waits for.
#pragma once

#include <functional>

namespace swr {

// Calls the function on a new thread, which ends with it. The function must own or share everything
// that it uses, because the thread may outlive whoever started it. False if the system can't start
// a thread; then the function is not called.
bool StartDetachedThread(std::function<void()> function);

}  // namespace swr
