#include "swr/system/windows_api_win.h"
#include <wincrypt.h>

#include <mscat.h>
#include <softpub.h>
#include <wintrust.h>

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "swr/hash/digest_text.h"
#include "swr/paths/path_forms.h"
#include "swr/provenance/signature.h"
#include "swr/system/system_library_win.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

constexpr LONGLONG LargestCatalogFile = 268435456;  // bytes: 256 MiB; hashing is a second read
constexpr DWORD LargestCatalogHash = 64;            // bytes
// In bytes. By its first four the trust services tell what kind a file is; of a shorter one they
// say that the parameter is wrong, which is said of no signature.
constexpr LONGLONG ShortestKnownKind = 4;

struct FileTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE value) noexcept { CloseHandle(value); }
};

// The forms with a named hash algorithm, which systems before Windows 8 lack.
using AcquireContext2Function = BOOL(WINAPI*)(HCATADMIN*, const GUID*, PCWSTR,
                                              PCCERT_STRONG_SIGN_PARA, DWORD);
using CalcHash2Function = BOOL(WINAPI*)(HCATADMIN, HANDLE, DWORD*, BYTE*, DWORD);

SystemFunction FindInWintrust(const char* name) {
  return FindSystemFunction(L"wintrust.dll", name);
}

struct TrustFunctions {
  decltype(&WinVerifyTrust) verifyTrust = FindInWintrust("WinVerifyTrust");
  decltype(&WTHelperProvDataFromStateData) getProvider =
      FindInWintrust("WTHelperProvDataFromStateData");
  decltype(&WTHelperGetProvSignerFromChain) getSigner =
      FindInWintrust("WTHelperGetProvSignerFromChain");
  decltype(&CertGetNameStringW) getName = FindSystemFunction(L"crypt32.dll", "CertGetNameStringW");
  decltype(&CryptCATAdminAcquireContext) acquire = FindInWintrust("CryptCATAdminAcquireContext");
  decltype(&CryptCATAdminReleaseContext) release = FindInWintrust("CryptCATAdminReleaseContext");
  decltype(&CryptCATAdminCalcHashFromFileHandle) calculate =
      FindInWintrust("CryptCATAdminCalcHashFromFileHandle");
  decltype(&CryptCATAdminEnumCatalogFromHash) findCatalog =
      FindInWintrust("CryptCATAdminEnumCatalogFromHash");
  decltype(&CryptCATCatalogInfoFromContext) getCatalogInfo =
      FindInWintrust("CryptCATCatalogInfoFromContext");
  decltype(&CryptCATAdminReleaseCatalogContext) releaseCatalog =
      FindInWintrust("CryptCATAdminReleaseCatalogContext");
  AcquireContext2Function acquire2 = FindInWintrust("CryptCATAdminAcquireContext2");
  CalcHash2Function calculate2 = FindInWintrust("CryptCATAdminCalcHashFromFileHandle2");

  // Of those that every supported system has.
  bool AreAllThere() const {
    return verifyTrust && getProvider && getSigner && getName && acquire && release && calculate &&
           findCatalog && getCatalogInfo && releaseCatalog;
  }
};

const TrustFunctions& Trust() {
  static const TrustFunctions functions;
  return functions;
}

struct CatalogAdminTraits {
  using Value = HCATADMIN;
  static constexpr HCATADMIN Invalid = nullptr;
  static void Close(HCATADMIN value) noexcept { Trust().release(value, 0); }
};
using CatalogAdmin = UniqueHandle<CatalogAdminTraits>;

struct TrustAnswer {
  uint32_t result = 0;
  uint32_t lastError = 0;
  std::u16string signer;
};

std::u16string GetSignerName(HANDLE stateData) {
  CRYPT_PROVIDER_DATA* provider = Trust().getProvider(stateData);
  if (provider == nullptr) return {};
  CRYPT_PROVIDER_SGNR* signer = Trust().getSigner(provider, 0, FALSE, 0);
  if (signer == nullptr || signer->csCertChain == 0) return {};
  const CERT_CONTEXT* certificate = signer->pasCertChain[0].pCert;
  if (certificate == nullptr) return {};
  const auto ask = [&](wchar_t* buffer, DWORD size) {
    return Trust().getName(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0, nullptr, buffer, size);
  };
  const DWORD size = ask(nullptr, 0);  // with the terminator
  if (size <= 1) return {};
  std::wstring name(size, L'\0');
  ask(name.data(), size);
  name.pop_back();
  return FromWide(name);
}

// One verification and its end. `data` holds the subject; the rest is filled here.
TrustAnswer VerifyTrust(WINTRUST_DATA& data) {
  data.cbStruct = sizeof data;
  data.dwUIChoice = WTD_UI_NONE;
  data.fdwRevocationChecks = WTD_REVOKE_NONE;
  data.dwStateAction = WTD_STATEACTION_VERIFY;
  data.dwProvFlags = WTD_REVOCATION_CHECK_NONE | WTD_CACHE_ONLY_URL_RETRIEVAL;
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  const auto window = static_cast<HWND>(INVALID_HANDLE_VALUE);
  TrustAnswer answer;
  answer.result = static_cast<uint32_t>(Trust().verifyTrust(window, &action, &data));
  answer.lastError = GetLastError();
  // Whatever the verdict: a signature that fails still names its signer.
  if (data.hWVTStateData != nullptr) answer.signer = GetSignerName(data.hWVTStateData);
  data.dwStateAction = WTD_STATEACTION_CLOSE;
  Trust().verifyTrust(window, &action, &data);
  return answer;
}

// The signature inside the file.
TrustAnswer VerifyFile(const std::u16string& longPath, HANDLE file) {
  WINTRUST_FILE_INFO subject = {};
  subject.cbStruct = sizeof subject;
  subject.pcwszFilePath = AsWide(longPath);
  subject.hFile = file;
  WINTRUST_DATA data = {};
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &subject;
  return VerifyTrust(data);
}

// The file's hash as catalogs list it, in one of the two ways to make it.
struct CatalogHash {
  CatalogAdmin admin;
  std::array<BYTE, LargestCatalogHash> bytes = {};
  DWORD size = LargestCatalogHash;
};

bool HashForCatalogs(HANDLE file, bool withSha256, CatalogHash& hash) {
  const TrustFunctions& trust = Trust();
  if (withSha256 && (trust.acquire2 == nullptr || trust.calculate2 == nullptr)) return false;
  const GUID subsystem = DRIVER_ACTION_VERIFY;
  HCATADMIN admin = nullptr;
  const BOOL acquired =
      withSha256 ? trust.acquire2(&admin, &subsystem, BCRYPT_SHA256_ALGORITHM, nullptr, 0)
                 : trust.acquire(&admin, &subsystem, 0);
  if (!acquired) return false;
  hash.admin.Reset(admin);
  SetFilePointer(file, 0, nullptr, FILE_BEGIN);
  return (withSha256 ? trust.calculate2(admin, file, &hash.size, hash.bytes.data(), 0)
                     : trust.calculate(file, &hash.size, hash.bytes.data(), 0)) != FALSE;
}

// Gives the verdict of the catalog that lists the file with this kind of hash. False, and `result`
// stays, when there is none.
bool CheckCatalogWith(bool withSha256, const std::u16string& longPath, HANDLE file,
                      SignatureResult& result) {
  CatalogHash hash;
  if (!HashForCatalogs(file, withSha256, hash)) return false;
  const HCATINFO context =
      Trust().findCatalog(hash.admin.Get(), hash.bytes.data(), hash.size, 0, nullptr);
  if (context == nullptr) return false;
  CATALOG_INFO catalog = {};
  catalog.cbStruct = sizeof catalog;
  const bool found = Trust().getCatalogInfo(context, &catalog, 0) != FALSE;
  if (found) {
    const std::string hex = BytesToHex({hash.bytes.data(), hash.size}, true);
    const std::wstring tag(hex.begin(), hex.end());
    WINTRUST_CATALOG_INFO subject = {};
    // Without the last field the structure is that of the systems that know no other hash.
    subject.cbStruct = withSha256 ? sizeof subject : offsetof(WINTRUST_CATALOG_INFO, hCatAdmin);
    subject.pcwszCatalogFilePath = catalog.wszCatalogFile;
    subject.pcwszMemberTag = tag.c_str();
    subject.pcwszMemberFilePath = AsWide(longPath);
    subject.hMemberFile = file;
    subject.pbCalculatedFileHash = hash.bytes.data();
    subject.cbCalculatedFileHash = hash.size;
    subject.hCatAdmin = hash.admin.Get();
    WINTRUST_DATA data = {};
    data.dwUnionChoice = WTD_CHOICE_CATALOG;
    data.pCatalog = &subject;
    TrustAnswer answer = VerifyTrust(data);
    result = {.state = TrustResultToState(answer.result),
              .signer = std::move(answer.signer),
              .viaCatalog = true,
              .errorCode = answer.result};
  }
  Trust().releaseCatalog(hash.admin.Get(), context, 0);
  return found;
}

bool IsUnknownForm(uint32_t code) {
  return code == static_cast<uint32_t>(TRUST_E_PROVIDER_UNKNOWN) ||
         code == static_cast<uint32_t>(TRUST_E_SUBJECT_FORM_UNKNOWN);
}

}  // namespace

SignatureResult CheckSignature(const std::u16string& path) {
  SignatureResult result;
  if (!Trust().AreAllThere()) {
    result.errorCode = ERROR_PROC_NOT_FOUND;
    return result;
  }
  const std::u16string longPath = ToLongPath(path);
  const UniqueHandle<FileTraits> file(CreateFileW(
      AsWide(longPath), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file) {
    result.errorCode = GetLastError();
    return result;
  }
  LARGE_INTEGER size = {};
  const bool sizeIsKnown = GetFileSizeEx(file.Get(), &size) != FALSE;
  TrustAnswer answer =
      sizeIsKnown && size.QuadPart < ShortestKnownKind
          ? TrustAnswer{.result = static_cast<uint32_t>(TRUST_E_SUBJECT_FORM_UNKNOWN)}
          : VerifyFile(longPath, file.Get());
  result.errorCode = answer.result;
  const bool hasNoSignature = answer.result == static_cast<uint32_t>(TRUST_E_NOSIGNATURE);
  if (!hasNoSignature && !IsUnknownForm(answer.result)) {
    result.state = TrustResultToState(answer.result);
    result.signer = std::move(answer.signer);
    return result;
  }
  result.state = hasNoSignature && !IsUnknownForm(answer.lastError) ? SignatureState::NotSigned
                                                                    : SignatureState::NotApplicable;
  if (sizeIsKnown && size.QuadPart <= LargestCatalogFile) {
    static_cast<void>(CheckCatalogWith(true, longPath, file.Get(), result) ||
                      CheckCatalogWith(false, longPath, file.Get(), result));
  }
  return result;
}

}  // namespace swr
