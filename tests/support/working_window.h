// A window on a fake screen whose files are hashed by a real worker, as in the program.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "app/worker/result_queue.h"
#include "app/worker/worker.h"
#include "tests/support/fake_window.h"

namespace app::testing {

class WorkingWindow {
 public:
  WorkingWindow() { main.Start(); }
  WorkingWindow(const WorkingWindow&) = delete;
  WorkingWindow& operator=(const WorkingWindow&) = delete;

  // What the window's thread does when results wait, and at a tick of its timer.
  void TakeResults() {
    if (auto taken = results_.Take(); !taken.empty()) main.OnHashResults(std::move(taken));
  }
  void Tick() {
    if (!desktop.timerRuns) return;
    TakeResults();
    main.OnProgressTimer();
  }
  void AcknowledgeProgress() { worker_.AcknowledgeProgress(); }

  // Does both until no row waits for anything. False when that takes more than a minute.
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
    return main.CellText(row, main.columns.size() - 1);
  }
  ResultLine Result() const { return {view.resultLine, view.resultKind}; }

  FakeView view;
  FakeDesktop desktop;

 private:
  bool Announce() {
    {
      const std::lock_guard lock(mutex_);
      waiting_ = true;
    }
    announced_.notify_one();
    return true;
  }
  // The worker is idle a moment before its last result comes.
  bool IsIdle() const {
    return !worker_.GetSnapshot().active && !desktop.timerRuns &&
           std::ranges::none_of(main.rows, [](const auto& row) { return row->pendingMask != 0; });
  }

  std::mutex mutex_;
  std::condition_variable announced_;
  bool waiting_ = false;  // under mutex_
  ResultQueue results_{{.results = [this] { return Announce(); }, .progress = [] { return true; }}};
  Worker worker_{results_};
  FakeInstallSystem installSystem_;
  Installation installation_{installSystem_};

 public:
  MainWindow main{view, desktop, worker_, installation_};
};

}  // namespace app::testing
