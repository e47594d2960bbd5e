// The digital signature of a file: whether it has one, whether it holds, and who signed.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

enum class SignatureState : uint32_t {
  NotApplicable = 0,  // the file's type can't carry a signature
  NotSigned = 1,      // the type can, and the file has none
  Valid = 2,
  Invalid = 3,    // there is one, and it fails for another reason than trust
  Untrusted = 4,  // there is one, and its signer or the signer's chain is not trusted
  Unknown = 5,    // the check could not be made
};

struct SignatureResult {
  SignatureState state = SignatureState::Unknown;
  std::u16string signer;    // display name, or empty
  bool viaCatalog = false;  // the verdict is about a catalog that lists the file
  // What the deciding call of the trust services gave, or why the file could not be opened.
  uint32_t errorCode = 0;

  bool operator==(const SignatureResult&) const = default;
};

// Asks the platform's trust services about a signature in the file and, without one, about a
// catalog that lists the file. Nothing goes to the network and no dialog is shown. May take long:
// not for the window's thread. Unknown for every file where there are no such services.
SignatureResult CheckSignature(const std::u16string& path);

// What a result of WinVerifyTrust says of a signature that is there.
SignatureState TrustResultToState(uint32_t trustResult);

}  // namespace swr
