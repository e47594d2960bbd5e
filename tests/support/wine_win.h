// Whether a test runs under Wine instead of real Windows.
#pragma once

#include "swr/system/windows_api_win.h"

namespace swr::testing {

inline bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace swr::testing
