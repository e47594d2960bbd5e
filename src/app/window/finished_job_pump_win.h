// Takes finished jobs to the window a few at a time, so that the window answers its user however
// fast files finish.
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

  // To be called before a worker reports to Sink().
  void Attach(HWND window) { window_ = window; }
  WorkerSink& Sink() { return jobs_; }

  // Answers WM_APP_JOBS_FINISHED: from here on the timer IDT_FINISHED_JOBS runs until all jobs are
  // taken.
  void OnAnnounced(JobIntake& intake);
  // Takes jobs until there are none or the window has been kept long enough.
  void TakeSome(JobIntake& intake);

 private:
  // These two on the worker's thread.
  bool Announce() const;
  bool AnnounceProgress() const;

  HWND window_ = nullptr;
  FinishedJobQueue jobs_;
};

}  // namespace app
