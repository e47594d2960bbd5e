// The dialog as a window: position, size, cursor and timer.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/screen/frame.h"
#include "app/screen/placement_view.h"
#include "app/screen/progress_timer.h"

namespace app {

class DialogFrame final : public Frame, public PlacementView, public ProgressTimer {
 public:
  // The dialog's current size becomes its minimum size.
  void Attach(HWND dialog, int dpi);
  void ChangeDpi(int dpi);
  SIZE SmallestSize() const { return smallestSize_; }

  void BeginWait() override;
  void EndWait() override;
  void ShowHashText(swr::AlgoMask mask, bool uppercase) override;
  void CloseWindow() override;
  std::optional<WindowPlacement> Placement() const override;
  bool MoveTo(const WindowPlacement& placement) override;
  void StartProgressTimer() override;
  void StopProgressTimer() override;

 private:
  HWND dialog_ = nullptr;
  int dpi_ = 96;
  SIZE smallestSize_ = {};
  HCURSOR oldCursor_ = nullptr;
};

}  // namespace app
