// Clicks links in a control of class SysLink that belongs to another process.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

namespace app::testing {

// Clicks the link with this id, or with this address. Returns at once. Throws std::runtime_error
// when there is no such link.
void ClickLink(HWND control, const std::u16string& idOrAddress);

}  // namespace app::testing
