#include "swr/provenance/signature.h"

#include <gtest/gtest.h>

#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

struct TrustCase {
  const char* name;  // of the code in winerror.h
  uint32_t code;
  SignatureState state;
};

constexpr TrustCase trustCases[] = {
    {"S_OK", 0, SignatureState::Valid},
    {"CERT_E_EXPIRED", 0x800B0101, SignatureState::Untrusted},
    {"CERT_E_UNTRUSTEDROOT", 0x800B0109, SignatureState::Untrusted},
    {"CERT_E_CHAINING", 0x800B010A, SignatureState::Untrusted},
    {"CERT_E_REVOKED", 0x800B010C, SignatureState::Untrusted},
    {"CERT_E_UNTRUSTEDTESTROOT", 0x800B010D, SignatureState::Untrusted},
    {"CERT_E_WRONG_USAGE", 0x800B0110, SignatureState::Untrusted},
    {"TRUST_E_EXPLICIT_DISTRUST", 0x800B0111, SignatureState::Untrusted},
    {"CRYPT_E_SECURITY_SETTINGS", 0x80092026, SignatureState::Untrusted},
    // All others are signatures that fail.
    {"TRUST_E_BAD_DIGEST", 0x80096010, SignatureState::Invalid},
    {"TRUST_E_NOSIGNATURE", 0x800B0100, SignatureState::Invalid},
    {"CERT_E_VALIDITYPERIODNESTING", 0x800B0102, SignatureState::Invalid},
    {"CERT_E_ROLE", 0x800B0103, SignatureState::Invalid},
    {"CERT_E_PURPOSE", 0x800B0106, SignatureState::Invalid},
    {"CERT_E_MALFORMED", 0x800B0108, SignatureState::Invalid},
    {"TRUST_E_FAIL", 0x800B010B, SignatureState::Invalid},
    {"CERT_E_REVOCATION_FAILURE", 0x800B010E, SignatureState::Invalid},
    {"CERT_E_CN_NO_MATCH", 0x800B010F, SignatureState::Invalid},
    {"CERT_E_UNTRUSTEDCA", 0x800B0112, SignatureState::Invalid},
    {"S_FALSE", 1, SignatureState::Invalid},
    {"E_ACCESSDENIED", 0x80070005, SignatureState::Invalid},
};

TEST(TrustResultToStateTest, DistinguishesMissingTrustFromTampering) {
  for (const TrustCase& test : trustCases) {
    EXPECT_EQ(TrustResultToState(test.code), test.state) << test.name;
  }
}

TEST(CheckSignatureTest, AMissingFileIsUnknown) {
  TempTree tree;
  const SignatureResult result = CheckSignature(tree.Path(u"gone.exe"));
  EXPECT_EQ(result.state, SignatureState::Unknown);
  EXPECT_EQ(result.signer, u"");
  EXPECT_FALSE(result.viaCatalog);
}

}  // namespace
}  // namespace swr::testing
