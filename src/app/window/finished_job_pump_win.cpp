#include "app/window/finished_job_pump_win.h"

#include <memory>
#include <utility>
#include <vector>

#include "app/window/window_messages_win.h"

namespace app {
namespace {

constexpr size_t JobsAtOnce = 1000;
constexpr ULONGLONG LongestIntake = 35;  // ms

}  // namespace

bool FinishedJobPump::Announce() const {
  return PostMessageW(window_, WM_APP_JOBS_FINISHED, 0, 0) != FALSE;
}

bool FinishedJobPump::AnnounceProgress() const {
  return PostMessageW(window_, WM_APP_HASH_PROGRESS, 0, 0) != FALSE;
}

void FinishedJobPump::OnAnnounced(JobIntake& intake) {
  // Timer messages have a lower priority than user input. The timer is set first because the intake
  // can open a message box, and jobs that finish while it is open must still be taken.
  SetTimer(window_, IDT_FINISHED_JOBS, FinishedJobsInterval, nullptr);
  TakeSome(intake);
}

void FinishedJobPump::TakeSome(JobIntake& intake) {
  const ULONGLONG start = GetTickCount64();
  bool moreGathered = true;
  while (moreGathered && GetTickCount64() - start < LongestIntake) {
    std::vector<std::unique_ptr<FinishedJob>> taken = jobs_.Take(JobsAtOnce);
    if (taken.empty()) KillTimer(window_, IDT_FINISHED_JOBS);
    moreGathered = taken.size() == JobsAtOnce;
    if (!taken.empty()) intake.Take(std::move(taken));
  }
}

}  // namespace app
