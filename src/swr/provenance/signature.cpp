#include "swr/provenance/signature.h"

namespace swr {
namespace {

// Values: winerror.h of the Windows SDK.
constexpr uint32_t CertExpired = 0x800B0101;
constexpr uint32_t CertUntrustedRoot = 0x800B0109;
constexpr uint32_t CertChaining = 0x800B010A;
constexpr uint32_t CertRevoked = 0x800B010C;
constexpr uint32_t CertUntrustedTestRoot = 0x800B010D;
constexpr uint32_t CertWrongUsage = 0x800B0110;
constexpr uint32_t TrustExplicitDistrust = 0x800B0111;
constexpr uint32_t CryptSecuritySettings = 0x80092026;

}  // namespace

SignatureState TrustResultToState(uint32_t trustResult) {
  switch (trustResult) {
    case 0:
      return SignatureState::Valid;
    case CertExpired:
    case CertUntrustedRoot:
    case CertChaining:
    case CertRevoked:
    case CertUntrustedTestRoot:
    case CertWrongUsage:
    case TrustExplicitDistrust:
    case CryptSecuritySettings:
      return SignatureState::Untrusted;
    default:
      return SignatureState::Invalid;
  }
}

}  // namespace swr
