// A window on a fake screen whose files are looked up and hashed by real threads, as in the
// program.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "app/intake/file_intake.h"
#include "app/worker/finished_jobs.h"
#include "app/worker/worker.h"
#include "tests/support/end_of_life.h"
#include "tests/support/fake_window.h"

namespace app::testing {

// The parts of a window with real threads.
class WorkingParts {
 public:
  // `origins` replaces those of the fake desktop if it is not null, and must outlive the object.
  explicit WorkingParts(OriginReads* origins) : origins_(origins != nullptr ? *origins : desktop) {}

  // May outlive the window.
  const std::shared_ptr<swr::testing::EndOfLife> intakeThread =
      std::make_shared<swr::testing::EndOfLife>();
  FakeView view;
  FakeDesktop desktop;

 protected:
  // Waiting jobs refer to the rows of the window, which is destroyed before the worker.
  ~WorkingParts() { worker_.CancelAll(); }

  bool Announce() {
    {
      const std::lock_guard lock(mutex_);
      waiting_ = true;
    }
    announced_.notify_one();
    return true;
  }

  std::mutex mutex_;
  std::condition_variable announced_;
  bool waiting_ = false;  // under mutex_
  FinishedJobQueue finished_{FinishedJobQueue::Announcements{
      .finished = [this] { return Announce(); }, .progress = [] { return true; }}};
  Worker worker_{finished_};
  FileIntake fileIntake_{[this, token = intakeThread->TakeToken()] { return Announce(); }};
  FakeInstallSystem installSystem_;
  Installation installation_{installSystem_};
  OriginReads& origins_;

 public:
  MainWindow main{ScreenOf(view, desktop), DesktopOf(desktop, origins_), worker_, fileIntake_,
                  installation_};
};

class WorkingWindow : public WorkingParts, public WindowFlows {
 public:
  explicit WorkingWindow(OriginReads* origins = nullptr)
      : WorkingParts(origins), WindowFlows(main) {
    main.Start();
  }
  WorkingWindow(const WorkingWindow&) = delete;
  WorkingWindow& operator=(const WorkingWindow&) = delete;

  // What the window's thread does when files or finished jobs are waiting, and at a tick of its
  // timer.
  void TakeResults() {
    TakeFiles();
    if (auto taken = finished_.Take(); !taken.empty()) intake.Take(std::move(taken));
  }
  void TakeFiles() {
    if (!arrivals.TakeSome(std::chrono::milliseconds(20))) fileIntake_.AnnounceNext();
  }
  void Tick() {
    if (!desktop.timerRuns) return;
    TakeResults();
    intake.OnTimer();
  }
  void AcknowledgeProgress() { worker_.AcknowledgeProgress(); }

  // Does both until no row is waiting. False when that takes more than a minute.
  bool WaitUntilIdle() {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (true) {
      AcknowledgeProgress();
      TakeResults();
      Tick();
      if (IsIdle()) return true;
      std::unique_lock lock(mutex_);
      if (std::chrono::steady_clock::now() > deadline) return false;
      announced_.wait_for(lock, 1ms, [this] { return std::exchange(waiting_, false); });
    }
  }
  std::u16string StatusCell(size_t row) const {
    return cells.TextOf(row, columns.Defs().size() - 1);
  }
  ResultLine Result() const { return {view.resultLine, view.resultKind}; }

 private:
  // The worker becomes idle a moment before its last result arrives.
  bool IsIdle() const {
    return !arrivals.Open().Any() && !worker_.GetSnapshot().active && !desktop.timerRuns &&
           std::ranges::none_of(rows, [](const Row& row) { return row.pendingMask != 0; });
  }
};

}  // namespace app::testing
