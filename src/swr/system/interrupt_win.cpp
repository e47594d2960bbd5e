#include "swr/system/interrupt.h"

#include "swr/system/windows_api_win.h"

#include <mutex>

#include "swr/system/standard_stream.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

// What an interrupt does. The handler runs on a thread of its own.
struct InterruptActions {
  std::mutex mutex;
  std::u16string fileToRemove;
  std::string_view textToWrite;
};

InterruptActions& Actions() {
  static InterruptActions actions;
  return actions;
}

BOOL WINAPI OnConsoleEvent(DWORD /*event*/) {
  const std::lock_guard lock(Actions().mutex);
  // The file is open with delete sharing, so it is deleted when its last handle is closed.
  if (!Actions().fileToRemove.empty()) DeleteFileW(AsWide(Actions().fileToRemove));
  // If this write fails, there is nothing left to do.
  if (!Actions().textToWrite.empty()) {
    [[maybe_unused]] const uint32_t error =
        WriteStandard(StandardStream::Error, Actions().textToWrite);
  }
  // The system's own handler comes next: it ends the process with STATUS_CONTROL_C_EXIT.
  return FALSE;
}

}  // namespace

void EndOnInterrupt() {
  Actions();
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

void RemoveFileOnInterrupt(const std::u16string& path) {
  const std::lock_guard lock(Actions().mutex);
  Actions().fileToRemove = path;
}

void WriteOnInterrupt(std::string_view text) {
  const std::lock_guard lock(Actions().mutex);
  Actions().textToWrite = text;
}

}  // namespace swr
