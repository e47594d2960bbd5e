#include "swr/provenance/trust_functions_win.h"

#include "swr/system/system_library_win.h"

namespace swr {
namespace {

TrustFunctions FindTrustFunctions() {
  const auto find = [](const char* name) { return FindSystemFunction(L"wintrust.dll", name); };
  return {
      .WinVerifyTrust = find("WinVerifyTrust"),
      .WTHelperProvDataFromStateData = find("WTHelperProvDataFromStateData"),
      .WTHelperGetProvSignerFromChain = find("WTHelperGetProvSignerFromChain"),
      .CertGetNameStringW = FindSystemFunction(L"crypt32.dll", "CertGetNameStringW"),
      .CryptCATAdminAcquireContext = find("CryptCATAdminAcquireContext"),
      .CryptCATAdminReleaseContext = find("CryptCATAdminReleaseContext"),
      .CryptCATAdminCalcHashFromFileHandle = find("CryptCATAdminCalcHashFromFileHandle"),
      .CryptCATAdminEnumCatalogFromHash = find("CryptCATAdminEnumCatalogFromHash"),
      .CryptCATCatalogInfoFromContext = find("CryptCATCatalogInfoFromContext"),
      .CryptCATAdminReleaseCatalogContext = find("CryptCATAdminReleaseCatalogContext"),
      .CryptCATAdminAcquireContext2 = find("CryptCATAdminAcquireContext2"),
      .CryptCATAdminCalcHashFromFileHandle2 = find("CryptCATAdminCalcHashFromFileHandle2"),
  };
}

}  // namespace

const TrustFunctions& SystemTrustFunctions() {
  static const TrustFunctions functions = FindTrustFunctions();
  return functions;
}

}  // namespace swr
