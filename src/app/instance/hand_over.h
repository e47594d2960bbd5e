// One window per user: a process that is started with paths hands them to the window that is
// already open, and exits. This file has the message that carries the paths and the steps of the
// hand-over; InstanceSystem has the system calls.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace app {

// Marks the message as ours: the letters S, W, R and P, the first in the highest of four bytes.
inline constexpr uint64_t HandOverMark = 0x53575250;

// The payload: each path in UTF-16, followed by one U+0000.
std::u16string HandOverPayload(const std::vector<std::u16string>& paths);

// The paths in a message with this mark and these bytes, which any process may have sent. Empty
// paths are dropped and the last terminator may be missing. Nothing when the message is not ours.
std::optional<std::vector<std::u16string>> ReadHandOver(uint64_t mark,
                                                        std::span<const std::byte> payload);

// Implemented by the platform and by the tests.
class InstanceSystem {
 public:
  virtual ~InstanceSystem() = default;

  // Opens the named mutex that says that an instance exists, and keeps it open while this process
  // runs. True when another process had it open already.
  virtual bool AnotherInstanceExists() = 0;
  // The window published last, or 0. It may no longer exist.
  virtual uint64_t PublishedWindow() = 0;
  virtual bool IsWindow(uint64_t window) = 0;
  // Waits 100 milliseconds.
  virtual void WaitForWindow() = 0;
  // `path` made absolute, relative to this process's current folder; nothing when that can't be
  // done.
  virtual std::optional<std::u16string> FullPath(const std::u16string& path) = 0;
  // Sends the payload, allows the window to come to the foreground, and waits for its answer for at
  // most 10 seconds. False when the window hangs, is gone or takes longer.
  virtual bool Deliver(uint64_t window, const std::u16string& payload) = 0;
};

// Hands the paths to the window of another instance. False when there is none or when it does not
// accept them in time: then this process opens its own window for them. Without paths the result is
// always false, and a second window opens.
bool ForwardToFirstInstance(InstanceSystem& system, const std::vector<std::u16string>& paths);

}  // namespace app
