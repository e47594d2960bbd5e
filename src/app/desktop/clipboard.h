// Reading and writing text on the clipboard.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread.
class Clipboard {
 public:
  virtual ~Clipboard() = default;

  // Changes whenever something is put on the clipboard.
  virtual uint32_t ClipboardSequence() = 0;
  // Nothing when the clipboard holds no text or another program holds the clipboard open.
  virtual std::optional<std::u16string> ReadClipboardText() = 0;
  // Replaces the content of the clipboard. If this fails, the content is unchanged.
  virtual void WriteClipboardText(const std::u16string& text) = 0;
};

}  // namespace app
