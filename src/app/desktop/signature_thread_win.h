// Checks digital signatures, each on its own short-lived thread.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <string>

#include "app/desktop/signature_checks.h"
#include "swr/provenance/signature.h"

namespace app {

struct SignatureMessage {
  uint64_t rowId = 0;
  swr::SignatureResult result;
};

// Nothing waits for these threads.
class SignatureThreads final : public SignatureChecks {
 public:
  // A finished check posts this message to the window, with a pointer to a SignatureMessage in
  // lParam. The receiver owns it.
  void Attach(HWND window, UINT message) {
    window_ = window;
    message_ = message;
  }

  bool StartSignatureCheck(uint64_t rowId, const std::u16string& path) override;

 private:
  HWND window_ = nullptr;
  UINT message_ = 0;
};

}  // namespace app
