#include "swr/system/thread_schedule.h"

#include <pthread.h>
#include <sched.h>

namespace swr {

void PreferThroughput() noexcept {
  const sched_param parameters{};
  pthread_setschedparam(pthread_self(), SCHED_BATCH, &parameters);
}

}  // namespace swr
