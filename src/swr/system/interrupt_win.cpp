#include "swr/system/interrupt.h"

#include "swr/system/windows_api_win.h"

#include <mutex>

#include "swr/system/standard_stream.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

// The handler runs on a thread of its own.
struct LastActs {
  std::mutex mutex;
  std::u16string fileToRemove;
  std::string_view words;
};

LastActs& Acts() {
  static LastActs acts;
  return acts;
}

BOOL WINAPI EndByConsole(DWORD /*event*/) {
  const std::lock_guard lock(Acts().mutex);
  // The file is open with the right to delete it, and is deleted when its last handle is closed.
  if (!Acts().fileToRemove.empty()) DeleteFileW(AsWide(Acts().fileToRemove));
  // If this write fails, there is nothing left to do.
  if (!Acts().words.empty()) {
    [[maybe_unused]] const uint32_t error = WriteStandard(StandardStream::Error, Acts().words);
  }
  // The system's own handler comes next: it ends the process with STATUS_CONTROL_C_EXIT.
  return FALSE;
}

}  // namespace

void EndOnInterrupt() {
  Acts();
  SetConsoleCtrlHandler(EndByConsole, TRUE);
}

void RemoveFileOnInterrupt(const std::u16string& path) {
  const std::lock_guard lock(Acts().mutex);
  Acts().fileToRemove = path;
}

void WriteOnInterrupt(std::string_view text) {
  const std::lock_guard lock(Acts().mutex);
  Acts().words = text;
}

}  // namespace swr
