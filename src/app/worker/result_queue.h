// Carries finished jobs from the worker's thread to the window's.
//
// A window that is told of every file would have no time left for its user while thousands of
// small ones finish, and the system drops messages beyond a limit. So a result is announced only
// when the window last found nothing waiting; a window that is told keeps coming back to take what
// has gathered, in its own time, until it finds nothing.
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

class ResultQueue final : public WorkerSink {
 public:
  // Tells the window's thread that results wait, or that bytes moved on. Called on the worker's
  // thread, without a lock; false when it could not be told, in which case the next result tries
  // again.
  struct Announcements {
    std::function<bool()> results;
    std::function<bool()> progress;
  };
  explicit ResultQueue(Announcements announcements);

  void AddResult(std::unique_ptr<ResultMessage> result) override;
  void AnnounceResults() override;
  void PostProgress() override;
  bool HoldsResults() const override;

  // The results that have gathered, in order, but no more than `most`; ownership passes to the
  // caller. Called on the window's thread. After an empty answer the next result is announced
  // again.
  std::vector<std::unique_ptr<ResultMessage>> Take(size_t most = SIZE_MAX);

 private:
  Announcements announcements_;
  mutable std::mutex mutex_;
  std::deque<std::unique_ptr<ResultMessage>> results_;  // under mutex_
  // The window was told of results and has not found the queue empty since. Under mutex_.
  bool announced_ = false;
};

}  // namespace app
