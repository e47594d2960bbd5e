// The functions of Windows' trust services that a signature check calls, as a table, so that tests
// can replace them: Wine has no catalogs.
#pragma once

#include "swr/system/windows_api_win.h"
#include <wincrypt.h>

#include <mscat.h>
#include <softpub.h>
#include <wintrust.h>

#include <string>

#include "swr/provenance/signature.h"

namespace swr {

// See the functions of the same names in the Windows SDK (wintrust.h, mscat.h, wincrypt.h).
struct TrustFunctions {
  decltype(&::WinVerifyTrust) WinVerifyTrust = nullptr;
  decltype(&::WTHelperProvDataFromStateData) WTHelperProvDataFromStateData = nullptr;
  decltype(&::WTHelperGetProvSignerFromChain) WTHelperGetProvSignerFromChain = nullptr;
  decltype(&::CertGetNameStringW) CertGetNameStringW = nullptr;
  decltype(&::CryptCATAdminAcquireContext) CryptCATAdminAcquireContext = nullptr;
  decltype(&::CryptCATAdminReleaseContext) CryptCATAdminReleaseContext = nullptr;
  decltype(&::CryptCATAdminCalcHashFromFileHandle) CryptCATAdminCalcHashFromFileHandle = nullptr;
  decltype(&::CryptCATAdminEnumCatalogFromHash) CryptCATAdminEnumCatalogFromHash = nullptr;
  decltype(&::CryptCATCatalogInfoFromContext) CryptCATCatalogInfoFromContext = nullptr;
  decltype(&::CryptCATAdminReleaseCatalogContext) CryptCATAdminReleaseCatalogContext = nullptr;
  // Null before Windows 8: the forms that take the name of a hash algorithm. The header of this
  // MinGW declares only one of them.
  BOOL(WINAPI* CryptCATAdminAcquireContext2)
  (HCATADMIN*, const GUID*, PCWSTR, PCCERT_STRONG_SIGN_PARA, DWORD) = nullptr;
  BOOL(WINAPI* CryptCATAdminCalcHashFromFileHandle2)
  (HCATADMIN, HANDLE, DWORD*, BYTE*, DWORD) = nullptr;

  // Whether all functions that every supported system has were found.
  bool AreComplete() const {
    return WinVerifyTrust && WTHelperProvDataFromStateData && WTHelperGetProvSignerFromChain &&
           CertGetNameStringW && CryptCATAdminAcquireContext && CryptCATAdminReleaseContext &&
           CryptCATAdminCalcHashFromFileHandle && CryptCATAdminEnumCatalogFromHash &&
           CryptCATCatalogInfoFromContext && CryptCATAdminReleaseCatalogContext;
  }
};

// The system's own, looked up at the first call. May be called on any thread.
const TrustFunctions& SystemTrustFunctions();

// CheckSignature with these functions. Unknown with error 127 (procedure not found) if the table is
// not complete.
SignatureResult CheckSignatureWith(const TrustFunctions& trust, const std::u16string& path);

}  // namespace swr
