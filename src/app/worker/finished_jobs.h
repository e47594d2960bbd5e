// Carries finished jobs from the worker's thread to the window's.
//
// A window that got a message for every file would have no time left for its user while thousands
// of small ones finish, and the system drops messages beyond a limit. So a finished job is
// announced only when the window last found nothing waiting. A window that was told keeps coming
// back at its own pace to take what has gathered, until it finds nothing.
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
  // Tell the window's thread that finished jobs are waiting, or that bytes were read. Called on the
  // worker's thread, without a lock. False when the message could not be sent; the next finished
  // job tries again.
  struct Announcements {
    std::function<bool()> finished;
    std::function<bool()> progress;
  };
  explicit FinishedJobQueue(Announcements announcements);

  void AddFinished(std::unique_ptr<FinishedJob> job) override;
  void AnnounceFinished() override;
  void PostProgress() override;
  bool HoldsFinished() const override;

  // Takes the jobs that have gathered, in order, but no more than `most`. Called on the window's
  // thread. After an empty answer the next finished job is announced again.
  std::vector<std::unique_ptr<FinishedJob>> Take(size_t most = SIZE_MAX);

 private:
  Announcements announcements_;
  mutable std::mutex mutex_;
  std::deque<std::unique_ptr<FinishedJob>> jobs_;  // under mutex_
  // The window was told of jobs and has not found the queue empty since. Under mutex_.
  bool announced_ = false;
};

}  // namespace app
