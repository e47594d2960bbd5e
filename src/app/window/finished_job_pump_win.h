// Passes finished jobs to the window in batches, so that the window stays responsive however fast
// files finish.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/flows/job_intake.h"
#include "app/worker/finished_jobs.h"

namespace app {

class FinishedJobPump {
 public:
  FinishedJobPump()
      : jobs_({.finished = [this] { return Announce(); },
               .progress = [this] { return AnnounceProgress(); }}) {}
  FinishedJobPump(const FinishedJobPump&) = delete;
  FinishedJobPump& operator=(const FinishedJobPump&) = delete;

  // Must be called before a worker reports to Sink().
  void Attach(HWND window) { window_ = window; }
  WorkerSink& Sink() { return jobs_; }

  // Handles WM_APP_JOBS_FINISHED: from now on the timer IDT_FINISHED_JOBS runs until all jobs are
  // taken.
  void OnAnnounced(JobIntake& intake);
  // Takes jobs until there are none or the time limit is reached.
  void TakeSome(JobIntake& intake);

 private:
  // Both are called on the worker's thread.
  bool Announce() const;
  bool AnnounceProgress() const;

  HWND window_ = nullptr;
  FinishedJobQueue jobs_;
};

}  // namespace app
