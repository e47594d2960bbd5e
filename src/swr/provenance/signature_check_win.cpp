#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "swr/hash/digest_text.h"
#include "swr/paths/path_forms.h"
#include "swr/provenance/trust_functions_win.h"
#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

constexpr LONGLONG LargestCatalogFile = 268435456;  // bytes: 256 MiB; hashing reads the file again
constexpr DWORD LargestCatalogHash = 64;            // bytes
// In bytes. The trust services recognise the type of a file by its first four bytes. For a shorter
// one they report an invalid parameter, which would be shown as a broken signature.
constexpr LONGLONG ShortestSignedFile = 4;

// The two kinds of hash under which catalogs list files.
enum class CatalogHashKind : uint8_t { Sha256, Classic };

struct TrustAnswer {
  uint32_t result = 0;
  uint32_t lastError = 0;
  std::u16string signer;  // empty if it could not be determined
};

bool IsUnknownForm(uint32_t code) {
  return code == static_cast<uint32_t>(TRUST_E_PROVIDER_UNKNOWN) ||
         code == static_cast<uint32_t>(TRUST_E_SUBJECT_FORM_UNKNOWN);
}

// The checks of one open file.
class SignatureCheck {
 public:
  SignatureCheck(const TrustFunctions& trust, const std::u16string& longPath, HANDLE file)
      : trust_(trust), longPath_(longPath), file_(file) {}

  // The signature inside the file.
  TrustAnswer VerifyFile() const;
  // The signature of the catalog that lists the file under this kind of hash. Nothing when there is
  // no such catalog or a step of the search fails.
  std::optional<TrustAnswer> VerifyCatalog(CatalogHashKind kind) const;

 private:
  struct CatalogHash {
    std::array<BYTE, LargestCatalogHash> bytes = {};
    DWORD size = LargestCatalogHash;
  };

  std::u16string SignerName(HANDLE stateData) const;
  // Verifies the subject in `data`, whose other fields are filled here, and ends the verification.
  TrustAnswer Verify(WINTRUST_DATA& data) const;
  // Null on failure. To be released by the caller.
  HCATADMIN AcquireAdmin(CatalogHashKind kind) const;
  bool HashFile(CatalogHashKind kind, HCATADMIN admin, CatalogHash& hash) const;
  std::optional<TrustAnswer> VerifyListing(CatalogHashKind kind, HCATADMIN admin) const;
  TrustAnswer VerifyMember(CatalogHashKind kind, HCATADMIN admin, CatalogHash& hash,
                           const CATALOG_INFO& catalog) const;

  const TrustFunctions& trust_;
  const std::u16string& longPath_;
  HANDLE file_;
};

std::u16string SignatureCheck::SignerName(HANDLE stateData) const {
  CRYPT_PROVIDER_DATA* provider = trust_.WTHelperProvDataFromStateData(stateData);
  if (provider == nullptr) return {};
  CRYPT_PROVIDER_SGNR* signer = trust_.WTHelperGetProvSignerFromChain(provider, 0, FALSE, 0);
  if (signer == nullptr || signer->csCertChain == 0) return {};
  const CERT_CONTEXT* certificate = signer->pasCertChain[0].pCert;
  if (certificate == nullptr) return {};
  const auto getName = [&](wchar_t* buffer, DWORD size) {
    return trust_.CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0, nullptr, buffer,
                                     size);
  };
  const DWORD size = getName(nullptr, 0);  // with the terminator
  if (size <= 1) return {};
  std::wstring name(size, L'\0');
  getName(name.data(), size);
  name.pop_back();
  return FromWide(name);
}

TrustAnswer SignatureCheck::Verify(WINTRUST_DATA& data) const {
  data.cbStruct = sizeof data;
  data.dwUIChoice = WTD_UI_NONE;
  data.fdwRevocationChecks = WTD_REVOKE_NONE;
  data.dwStateAction = WTD_STATEACTION_VERIFY;
  data.dwProvFlags = WTD_REVOCATION_CHECK_NONE | WTD_CACHE_ONLY_URL_RETRIEVAL;
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  const auto window = static_cast<HWND>(INVALID_HANDLE_VALUE);
  TrustAnswer answer;
  answer.result = static_cast<uint32_t>(trust_.WinVerifyTrust(window, &action, &data));
  answer.lastError = GetLastError();
  // Whatever the verdict: a signature that fails still names its signer.
  if (data.hWVTStateData != nullptr) answer.signer = SignerName(data.hWVTStateData);
  data.dwStateAction = WTD_STATEACTION_CLOSE;
  trust_.WinVerifyTrust(window, &action, &data);
  return answer;
}

TrustAnswer SignatureCheck::VerifyFile() const {
  WINTRUST_FILE_INFO subject = {};
  subject.cbStruct = sizeof subject;
  subject.pcwszFilePath = AsWide(longPath_);
  subject.hFile = file_;
  WINTRUST_DATA data = {};
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &subject;
  return Verify(data);
}

HCATADMIN SignatureCheck::AcquireAdmin(CatalogHashKind kind) const {
  const GUID subsystem = DRIVER_ACTION_VERIFY;
  HCATADMIN admin = nullptr;
  if (kind == CatalogHashKind::Classic) {
    return trust_.CryptCATAdminAcquireContext(&admin, &subsystem, 0) ? admin : nullptr;
  }
  if (trust_.CryptCATAdminAcquireContext2 == nullptr ||
      trust_.CryptCATAdminCalcHashFromFileHandle2 == nullptr) {
    return nullptr;
  }
  return trust_.CryptCATAdminAcquireContext2(&admin, &subsystem, BCRYPT_SHA256_ALGORITHM, nullptr,
                                             0)
             ? admin
             : nullptr;
}

bool SignatureCheck::HashFile(CatalogHashKind kind, HCATADMIN admin, CatalogHash& hash) const {
  SetFilePointer(file_, 0, nullptr, FILE_BEGIN);
  if (kind == CatalogHashKind::Classic) {
    return trust_.CryptCATAdminCalcHashFromFileHandle(file_, &hash.size, hash.bytes.data(), 0);
  }
  return trust_.CryptCATAdminCalcHashFromFileHandle2(admin, file_, &hash.size, hash.bytes.data(),
                                                     0);
}

TrustAnswer SignatureCheck::VerifyMember(CatalogHashKind kind, HCATADMIN admin, CatalogHash& hash,
                                         const CATALOG_INFO& catalog) const {
  const std::string hex = BytesToHex({hash.bytes.data(), hash.size}, true);
  const std::wstring tag(hex.begin(), hex.end());
  WINTRUST_CATALOG_INFO subject = {};
  // Systems that know only the classic hash have the structure without its last field.
  subject.cbStruct =
      kind == CatalogHashKind::Sha256 ? sizeof subject : offsetof(WINTRUST_CATALOG_INFO, hCatAdmin);
  subject.pcwszCatalogFilePath = catalog.wszCatalogFile;
  subject.pcwszMemberTag = tag.c_str();
  subject.pcwszMemberFilePath = AsWide(longPath_);
  subject.hMemberFile = file_;
  subject.pbCalculatedFileHash = hash.bytes.data();
  subject.cbCalculatedFileHash = hash.size;
  subject.hCatAdmin = admin;
  WINTRUST_DATA data = {};
  data.dwUnionChoice = WTD_CHOICE_CATALOG;
  data.pCatalog = &subject;
  return Verify(data);
}

std::optional<TrustAnswer> SignatureCheck::VerifyListing(CatalogHashKind kind,
                                                         HCATADMIN admin) const {
  CatalogHash hash;
  if (!HashFile(kind, admin, hash)) return std::nullopt;
  const HCATINFO context =
      trust_.CryptCATAdminEnumCatalogFromHash(admin, hash.bytes.data(), hash.size, 0, nullptr);
  if (context == nullptr) return std::nullopt;
  std::optional<TrustAnswer> answer;
  CATALOG_INFO catalog = {};
  catalog.cbStruct = sizeof catalog;
  if (trust_.CryptCATCatalogInfoFromContext(context, &catalog, 0)) {
    answer = VerifyMember(kind, admin, hash, catalog);
  }
  trust_.CryptCATAdminReleaseCatalogContext(admin, context, 0);
  return answer;
}

std::optional<TrustAnswer> SignatureCheck::VerifyCatalog(CatalogHashKind kind) const {
  const HCATADMIN admin = AcquireAdmin(kind);
  if (admin == nullptr) return std::nullopt;
  std::optional<TrustAnswer> answer = VerifyListing(kind, admin);
  trust_.CryptCATAdminReleaseContext(admin, 0);
  return answer;
}

}  // namespace

SignatureResult CheckSignatureWith(const TrustFunctions& trust, const std::u16string& path) {
  if (!trust.AreComplete()) return {.errorCode = ERROR_PROC_NOT_FOUND};
  const std::u16string longPath = ToLongPath(path);
  const FileHandle file(CreateFileW(AsWide(longPath), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file) return {.errorCode = GetLastError()};
  LARGE_INTEGER size = {};
  const bool isSizeKnown = GetFileSizeEx(file.Get(), &size) != FALSE;
  const SignatureCheck check(trust, longPath, file.Get());

  TrustAnswer answer =
      isSizeKnown && size.QuadPart < ShortestSignedFile
          ? TrustAnswer{.result = static_cast<uint32_t>(TRUST_E_SUBJECT_FORM_UNKNOWN)}
          : check.VerifyFile();
  const bool hasNoSignature = answer.result == static_cast<uint32_t>(TRUST_E_NOSIGNATURE);
  if (!hasNoSignature && !IsUnknownForm(answer.result)) {
    return {.state = TrustResultToState(answer.result),
            .signer = std::move(answer.signer),
            .errorCode = answer.result};
  }
  if (isSizeKnown && size.QuadPart <= LargestCatalogFile) {
    for (const CatalogHashKind kind : {CatalogHashKind::Sha256, CatalogHashKind::Classic}) {
      if (std::optional<TrustAnswer> listed = check.VerifyCatalog(kind)) {
        return {.state = TrustResultToState(listed->result),
                .signer = std::move(listed->signer),
                .viaCatalog = true,
                .errorCode = listed->result};
      }
    }
  }
  const bool canBeSigned = hasNoSignature && !IsUnknownForm(answer.lastError);
  return {.state = canBeSigned ? SignatureState::NotSigned : SignatureState::NotApplicable,
          .errorCode = answer.result};
}

SignatureResult CheckSignature(const std::u16string& path) {
  return CheckSignatureWith(SystemTrustFunctions(), path);
}

}  // namespace swr
