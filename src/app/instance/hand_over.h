// One window for one user: a program that is started with paths hands them to the window that is
// there already, and ends. This file has the message that carries them and the way to the window;
// what it asks of the system is behind InstanceSystem.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace app {

// Marks the message as ours: the letters S, W, R and P, the first in the highest of four bytes.
inline constexpr uint64_t HandOverMark = 0x53575250;

// The payload: each path in UTF-16, with one U+0000 behind it.
std::u16string HandOverPayload(const std::vector<std::u16string>& paths);

// The paths of a message of this mark and these bytes, whoever sent it. Empty paths are left out
// and the last terminator may be missing. Nothing when the message is not ours.
std::optional<std::vector<std::u16string>> ReadHandOver(uint64_t mark,
                                                        std::span<const std::byte> payload);

// Implemented by the platform and by the tests.
class InstanceSystem {
 public:
  virtual ~InstanceSystem() = default;

  // Leaves the sign that an instance exists, for as long as this process lives. True when another
  // process had left it already.
  virtual bool AnotherInstanceExists() = 0;
  // The window that was published last, 0 for none; it may be gone.
  virtual uint64_t PublishedWindow() = 0;
  virtual bool IsWindow(uint64_t window) = 0;
  // Waits 100 milliseconds.
  virtual void WaitForWindow() = 0;
  // `path` made absolute against this process's folder; nothing when that can't be done.
  virtual std::optional<std::u16string> FullPath(const std::u16string& path) = 0;
  // Sends the payload, lets the window come to the foreground, and waits for at most 10 seconds.
  // False when the window hangs, is gone or takes longer.
  virtual bool Deliver(uint64_t window, const std::u16string& payload) = 0;
};

// Hands the paths to the window of another instance. False when there is none that takes them
// within the time that a user would wait: then this process opens a window of its own for them.
// Without paths it always does, beside whatever window there is.
bool ForwardToFirstInstance(InstanceSystem& system, const std::vector<std::u16string>& paths);

}  // namespace app
