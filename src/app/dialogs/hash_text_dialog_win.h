// The Hash Text dialog.
#pragma once

#include "swr/system/windows_api_win.h"

#include "swr/hash/algorithms.h"

namespace app {

// Shows the dialog over `owner` and returns when it is closed. An empty mask means SHA-256.
void ShowHashTextDialog(HWND owner, swr::AlgoMask mask, bool uppercase);

}  // namespace app
