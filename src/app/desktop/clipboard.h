// Reading and writing text on the clipboard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace app {

// A text that is made part by part, so that a long one is in memory only once.
struct TextInParts {
  using Append = std::function<void(std::u16string_view part)>;

  // The text must outlive the result.
  static TextInParts Of(std::u16string_view text) {
    return {text.size(), [text](const Append& append) { append(text); }};
  }

  size_t likelySize = 0;  // of the whole text, in units; memory is allocated for it at first
  std::function<void(const Append& append)> write;
};

// Implemented by the platform and by the tests. Called on the window's thread.
class Clipboard {
 public:
  virtual ~Clipboard() = default;

  // Changes whenever something is put on the clipboard.
  virtual uint32_t ClipboardSequence() = 0;
  // Nothing when the clipboard holds no text or another program holds the clipboard open.
  virtual std::optional<std::u16string> ReadClipboardText() = 0;
  // Replaces the content of the clipboard. If this fails, the content is unchanged.
  virtual void WriteClipboardText(const TextInParts& text) = 0;
};

}  // namespace app
