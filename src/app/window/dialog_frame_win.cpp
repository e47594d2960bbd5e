#include "app/window/dialog_frame_win.h"

#include "app/dialogs/hash_text_dialog_win.h"
#include "app/window/window_messages_win.h"

namespace app {

void DialogFrame::Attach(HWND dialog, int dpi) {
  dialog_ = dialog;
  dpi_ = dpi;
  RECT rect;
  GetWindowRect(dialog, &rect);
  smallestSize_ = {rect.right - rect.left, rect.bottom - rect.top};
}

void DialogFrame::ChangeDpi(int dpi) {
  smallestSize_ = {MulDiv(smallestSize_.cx, dpi, dpi_), MulDiv(smallestSize_.cy, dpi, dpi_)};
  dpi_ = dpi;
}

void DialogFrame::BeginWait() { oldCursor_ = SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }

void DialogFrame::EndWait() { SetCursor(oldCursor_); }

void DialogFrame::ShowHashText(swr::AlgoMask mask, bool uppercase) {
  ShowHashTextDialog(dialog_, mask, uppercase);
}

void DialogFrame::CloseWindow() { DestroyWindow(dialog_); }

std::optional<WindowPlacement> DialogFrame::Placement() const {
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  if (!GetWindowPlacement(dialog_, &placement)) return std::nullopt;
  const RECT& rect = placement.rcNormalPosition;
  return WindowPlacement{rect.left, rect.top, rect.right, rect.bottom,
                         placement.showCmd == SW_SHOWMAXIMIZED};
}

bool DialogFrame::MoveTo(const WindowPlacement& placement) {
  const RECT rect = {placement.left, placement.top, placement.right, placement.bottom};
  if (rect.right - rect.left < smallestSize_.cx || rect.bottom - rect.top < smallestSize_.cy ||
      MonitorFromRect(&rect, MONITOR_DEFAULTTONULL) == nullptr) {
    return false;
  }
  WINDOWPLACEMENT moved = {};
  moved.length = sizeof moved;
  moved.rcNormalPosition = rect;
  SetWindowPlacement(dialog_, &moved);
  return true;
}

void DialogFrame::StartProgressTimer() {
  SetTimer(dialog_, IDT_PROGRESS, ProgressInterval, nullptr);
}

void DialogFrame::StopProgressTimer() { KillTimer(dialog_, IDT_PROGRESS); }

}  // namespace app
