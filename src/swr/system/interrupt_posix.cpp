#include "swr/system/interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>

#include "swr/system/path_bytes_posix.h"

namespace swr {
namespace {

constexpr int handledSignals[] = {SIGINT, SIGTERM, SIGHUP};

// Static memory, because a signal handler must not allocate or wait for a lock.
std::array<char, PATH_MAX + 1> fileToRemove;
std::atomic<bool> hasFile = false;
std::atomic<const char*> textToWrite = nullptr;
std::atomic<size_t> textSize = 0;

void OnSignal(int number) {
  if (hasFile.load(std::memory_order_acquire)) unlink(fileToRemove.data());
  if (const char* text = textToWrite.load(std::memory_order_acquire)) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, textSize.load());
  }
  // The parent must see that a signal ended the process, not an exit code.
  signal(number, SIG_DFL);
  raise(number);
}

}  // namespace

void EndOnInterrupt() {
  for (const int number : handledSignals) {
    struct sigaction action = {};
    // Signals that the parent set to be ignored stay ignored (nohup).
    if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = OnSignal;
    // Without SA_NODEFER the signal would be blocked in the handler and could not be raised again.
    action.sa_flags = static_cast<int>(SA_NODEFER);
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
  }
}

void RemoveFileOnInterrupt(const std::u16string& path) {
  hasFile.store(false, std::memory_order_release);
  const std::string bytes = PathBytesFromText(path);
  if (bytes.empty() || bytes.size() > PATH_MAX) return;
  std::ranges::copy(bytes, fileToRemove.begin());
  fileToRemove[bytes.size()] = '\0';
  hasFile.store(true, std::memory_order_release);
}

void WriteOnInterrupt(std::string_view text) {
  textToWrite.store(nullptr, std::memory_order_release);
  textSize.store(text.size());
  if (!text.empty()) textToWrite.store(text.data(), std::memory_order_release);
}

}  // namespace swr
