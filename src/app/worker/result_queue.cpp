#include "app/worker/result_queue.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace app {

ResultQueue::ResultQueue(Announcements announcements) : announcements_(std::move(announcements)) {}

void ResultQueue::AddResult(std::unique_ptr<ResultMessage> result) {
  const std::lock_guard lock(mutex_);
  results_.push_back(std::move(result));
}

void ResultQueue::AnnounceResults() {
  {
    const std::lock_guard lock(mutex_);
    // The window may have come by itself and taken them.
    if (announced_ || results_.empty()) return;
    announced_ = true;
  }
  if (announcements_.results()) return;
  const std::lock_guard lock(mutex_);
  announced_ = false;
}

void ResultQueue::PostProgress() { announcements_.progress(); }

bool ResultQueue::HoldsResults() const {
  const std::lock_guard lock(mutex_);
  return !results_.empty();
}

std::vector<std::unique_ptr<ResultMessage>> ResultQueue::Take(size_t most) {
  const std::lock_guard lock(mutex_);
  if (results_.empty()) announced_ = false;
  const auto end = results_.begin() + static_cast<ptrdiff_t>(std::min(most, results_.size()));
  std::vector<std::unique_ptr<ResultMessage>> taken(std::move_iterator(results_.begin()),
                                                    std::move_iterator(end));
  results_.erase(results_.begin(), end);
  return taken;
}

}  // namespace app
