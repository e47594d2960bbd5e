#include "app/window/found_files_pump_win.h"

#include "app/window/window_messages_win.h"

namespace app {

bool FoundFilesPump::Announce() const {
  return PostMessageW(window_, WM_APP_FILES_FOUND, 0, 0) != FALSE;
}

void FoundFilesPump::OnAnnounced(FileArrivals& arrivals) {
  // Timer messages have a lower priority than user input. The timer is set first because taking
  // files can open a message box, and files that are found while it is open must still be taken.
  SetTimer(window_, IDT_FOUND_FILES, FoundFilesInterval, nullptr);
  TakeSome(arrivals);
}

void FoundFilesPump::TakeFor(std::chrono::milliseconds longest, FileArrivals& arrivals) {
  if (arrivals.TakeSome(longest)) return;
  if (intake_.AnnounceNext()) KillTimer(window_, IDT_FOUND_FILES);
}

}  // namespace app
