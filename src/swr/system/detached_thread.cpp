#include "swr/system/detached_thread.h"

#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "swr/system/fault_injection.h"

namespace swr {

bool StartDetachedThread(std::function<void()> function) {
  if (InjectedFault(SystemCall::StartThread)) return false;
  try {
    // Held until the thread is detached, because it must not end before: the thread library of
    // MinGW would free its record twice, and two later threads would share one.
    const auto detaching = std::make_shared<std::mutex>();
    const std::lock_guard lock(*detaching);
    std::thread([detaching, function = std::move(function)] {
      detaching->lock();
      detaching->unlock();
      function();
    }).detach();
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

}  // namespace swr
