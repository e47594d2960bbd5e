// A signature check beside the window's thread.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <string>

#include "swr/provenance/signature.h"

namespace app {

struct SignatureMessage {
  uint64_t rowId = 0;
  swr::SignatureResult result;
};

// Checks the file on a thread of its own, which nothing waits for, and posts `message` with a
// SignatureMessage as its last parameter. The window that takes it owns it.
void StartSignatureThread(HWND window, UINT message, uint64_t rowId, const std::u16string& path);

}  // namespace app
