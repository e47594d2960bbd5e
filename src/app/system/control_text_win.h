// The text of a control, of any length.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

#include "swr/system/wide_text_win.h"

namespace app {

inline std::u16string ControlText(HWND control) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)), L'\0');
  const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1);
  return swr::FromWide({text.data(), static_cast<size_t>(length)});
}

}  // namespace app
