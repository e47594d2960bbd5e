#include "app/worker/finished_jobs.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace app {

FinishedJobQueue::FinishedJobQueue(Announcements announcements)
    : announcements_(std::move(announcements)) {}

void FinishedJobQueue::AddFinished(std::unique_ptr<FinishedJob> job) {
  const std::lock_guard lock(mutex_);
  jobs_.push_back(std::move(job));
}

void FinishedJobQueue::AnnounceFinished() {
  {
    const std::lock_guard lock(mutex_);
    // The window may already have taken them at a tick of its timer.
    if (announced_ || jobs_.empty()) return;
    announced_ = true;
  }
  if (announcements_.finished()) return;
  const std::lock_guard lock(mutex_);
  announced_ = false;
}

void FinishedJobQueue::PostProgress() { announcements_.progress(); }

bool FinishedJobQueue::HoldsFinished() const {
  const std::lock_guard lock(mutex_);
  return !jobs_.empty();
}

std::vector<std::unique_ptr<FinishedJob>> FinishedJobQueue::Take(size_t most) {
  const std::lock_guard lock(mutex_);
  if (jobs_.empty()) announced_ = false;
  const auto end = jobs_.begin() + static_cast<ptrdiff_t>(std::min(most, jobs_.size()));
  std::vector<std::unique_ptr<FinishedJob>> taken(std::move_iterator(jobs_.begin()),
                                                  std::move_iterator(end));
  jobs_.erase(jobs_.begin(), end);
  return taken;
}

}  // namespace app
