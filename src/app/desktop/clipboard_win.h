// Text from and to the clipboard.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>

namespace app {

// Nothing when the clipboard holds no text or another program holds the clipboard.
std::optional<std::u16string> ReadClipboardText(HWND owner);

// Replaces what is on the clipboard. A failure leaves it as it was.
void WriteClipboardText(HWND owner, const std::u16string& text);

}  // namespace app
