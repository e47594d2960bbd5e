// Checks of digital signatures, beside the window's thread.
#pragma once

#include <cstdint>
#include <string>

namespace app {

// Implemented by the platform and by the tests. Called on the window's thread.
class SignatureChecks {
 public:
  virtual ~SignatureChecks() = default;

  // Leads to DetailsPane::OnSignatureResult, some time later.
  virtual void StartSignatureCheck(uint64_t rowId, const std::u16string& path) = 0;
};

}  // namespace app
