#include "app/worker/result_queue.h"

#include <utility>

namespace app {

ResultQueue::ResultQueue(Announcements announcements) : announcements_(std::move(announcements)) {}

void ResultQueue::PostResult(std::unique_ptr<ResultMessage> result) {
  const std::lock_guard lock(mutex_);
  results_.push_back(std::move(result));
  if (!announced_) announced_ = announcements_.results();
}

void ResultQueue::PostProgress() { announcements_.progress(); }

std::vector<std::unique_ptr<ResultMessage>> ResultQueue::Take() {
  const std::lock_guard lock(mutex_);
  if (results_.empty()) announced_ = false;
  return std::exchange(results_, {});
}

}  // namespace app
