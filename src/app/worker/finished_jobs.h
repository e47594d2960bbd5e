// Passes finished jobs from the worker's thread to the window's.
//
// With one message per file, thousands of small files would keep the window from handling input,
// and the system drops messages beyond a limit. So a finished job is announced only if the window
// found the queue empty the last time it looked. After an announcement the window polls the queue
// until it is empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "app/worker/worker.h"

namespace app {

class FinishedJobQueue final : public WorkerSink {
 public:
  // Notify the window's thread that finished jobs are waiting, or that bytes were read. Called on
  // the worker's thread, without a lock. False when the message could not be sent; the next
  // finished job tries again.
  struct Announcements {
    std::function<bool()> finished;
    std::function<bool()> progress;
  };
  explicit FinishedJobQueue(Announcements announcements);

  void AddFinished(std::unique_ptr<FinishedJob> job) override;
  void AnnounceFinished() override;
  void PostProgress() override;
  bool HoldsFinished() const override;

  // Takes the finished jobs in order, at most `most` of them. Called on the window's thread. After
  // an empty result the next finished job is announced again.
  std::vector<std::unique_ptr<FinishedJob>> Take(size_t most = SIZE_MAX);

 private:
  Announcements announcements_;
  mutable std::mutex mutex_;
  std::deque<std::unique_ptr<FinishedJob>> jobs_;  // under mutex_
  // Jobs were announced and the window has not found the queue empty since. Under mutex_.
  bool announced_ = false;
};

}  // namespace app
