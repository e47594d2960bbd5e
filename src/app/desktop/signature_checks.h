// Checks digital signatures in the background.
#pragma once

#include <cstdint>
#include <string>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread.
class SignatureChecks {
 public:
  virtual ~SignatureChecks() = default;

  // The result arrives later, at DetailsPane::OnSignatureResult. False if the check can't be
  // started; then no result arrives.
  virtual bool StartSignatureCheck(uint64_t rowId, const std::u16string& path) = 0;
};

}  // namespace app
