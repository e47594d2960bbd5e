// The digital signature of a file: whether it has one, whether it is valid, and who signed it.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

enum class SignatureState : uint32_t {
  NotApplicable = 0,  // the file's type can't carry a signature
  NotSigned = 1,      // the type can, but the file has none
  Valid = 2,
  Invalid = 3,    // it has one that fails for a reason other than trust
  Untrusted = 4,  // it has one whose signer or certificate chain is not trusted
  Unknown = 5,    // it could not be checked
};

struct SignatureResult {
  SignatureState state = SignatureState::Unknown;
  std::u16string signer;    // display name, or empty
  bool viaCatalog = false;  // the state is that of a catalog that lists the file
  // The result of the deciding call of the trust services, or why the file could not be opened.
  uint32_t errorCode = 0;

  bool operator==(const SignatureResult&) const = default;
};

// Verifies the signature inside the file or, if it has none, that of a catalog that lists the file;
// catalogs are searched for files of up to 256 MiB. Uses no network and shows no dialog. May block
// for a long time, so it must not be called on the window's thread. May be called on any thread.
// Always Unknown where the system has no trust services.
SignatureResult CheckSignature(const std::u16string& path);

// The state of an existing signature for a result of WinVerifyTrust.
SignatureState TrustResultToState(uint32_t trustResult);

}  // namespace swr
