// Passes found files to the window in batches, so that the window stays responsive however fast
// files are found.
#pragma once

#include "swr/system/windows_api_win.h"

#include <chrono>

#include "app/flows/file_arrivals.h"
#include "app/intake/file_intake.h"

namespace app {

class FoundFilesPump {
 public:
  FoundFilesPump() : intake_([this] { return Announce(); }) {}
  FoundFilesPump(const FoundFilesPump&) = delete;
  FoundFilesPump& operator=(const FoundFilesPump&) = delete;

  // To be called before the first request.
  void Attach(HWND window) { window_ = window; }
  Intake& GetIntake() { return intake_; }
  // To be called when the window is destroyed. Takes half a second at most.
  void Stop() { intake_.Stop(); }

  // Handles WM_APP_FILES_FOUND: from now on the timer IDT_FOUND_FILES runs until all files are
  // taken.
  void OnAnnounced(FileArrivals& arrivals);
  // Takes files until there are none or the time limit is reached.
  void TakeSome(FileArrivals& arrivals) { TakeFor(LongestTake, arrivals); }
  // The same with a shorter limit, for a tick of the progress timer, which has more to do.
  void TakeFew(FileArrivals& arrivals) { TakeFor(ShortTake, arrivals); }

 private:
  static constexpr std::chrono::milliseconds LongestTake{20};
  static constexpr std::chrono::milliseconds ShortTake{5};

  void TakeFor(std::chrono::milliseconds longest, FileArrivals& arrivals);
  // Called on the intake's thread.
  bool Announce() const;

  HWND window_ = nullptr;
  FileIntake intake_;
};

}  // namespace app
