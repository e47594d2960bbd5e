// The clipboard of Windows.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>

#include "app/desktop/clipboard.h"

namespace app {

// See Clipboard. `owner` becomes the owner of the clipboard when text is written.
std::optional<std::u16string> ReadClipboardText(HWND owner);
void WriteClipboardText(HWND owner, const TextInParts& text);

class WindowsClipboard final : public Clipboard {
 public:
  void Attach(HWND owner) { owner_ = owner; }

  uint32_t ClipboardSequence() override;
  std::optional<std::u16string> ReadClipboardText() override;
  void WriteClipboardText(const TextInParts& text) override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace app
