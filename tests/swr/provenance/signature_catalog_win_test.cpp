// The search for a catalog that lists a file, with fake trust services.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/provenance/trust_functions_win.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

constexpr auto NoSignature = static_cast<uint32_t>(TRUST_E_NOSIGNATURE);
constexpr auto UnknownForm = static_cast<uint32_t>(TRUST_E_SUBJECT_FORM_UNKNOWN);
constexpr auto UnknownProvider = static_cast<uint32_t>(TRUST_E_PROVIDER_UNKNOWN);
constexpr auto BadDigest = static_cast<uint32_t>(TRUST_E_BAD_DIGEST);
constexpr auto UntrustedRoot = static_cast<uint32_t>(CERT_E_UNTRUSTEDROOT);

// What the fakes return in the search for a catalog by one kind of hash: SHA-256 or the classic
// one.
struct CatalogAnswers {
  bool hasFunctions = true;  // the two that older systems lack
  bool acquires = true;
  bool hashes = true;
  bool finds = true;
  bool describes = true;
  uint32_t verdict = 0;
};

// The answers of the fakes, and a record of their calls. One per test; the functions below refer to
// it.
struct FakeTrust {
  uint32_t fileVerdict = NoSignature;
  DWORD lastError = 0;
  bool namesSigner = true;
  CatalogAnswers sha256;
  CatalogAnswers classic;

  std::vector<std::string> calls;
  std::vector<WINTRUST_DATA> closed;  // as they were at the end of each verification
  std::wstring catalogPath;
  std::wstring memberTag;
  std::wstring memberPath;
  WINTRUST_CATALOG_INFO catalogSubject = {};
  std::vector<BYTE> memberHash;
};

FakeTrust* fake = nullptr;

// Handles that the functions below return: a catalog administrator for each kind of hash, a
// catalog, and a verification.
const HCATADMIN sha256Admin = reinterpret_cast<HCATADMIN>(0x256);
const HCATADMIN classicAdmin = reinterpret_cast<HCATADMIN>(0x1);
const HCATINFO catalogContext = reinterpret_cast<HCATINFO>(0xCA7);
const HANDLE verificationState = reinterpret_cast<HANDLE>(0x57A7E);
constexpr wchar_t FakeCatalogPath[] = L"C:\\Windows\\System32\\CatRoot\\a.cat";

const CatalogAnswers& AnswersOf(HCATADMIN admin) {
  return admin == sha256Admin ? fake->sha256 : fake->classic;
}

LONG WINAPI Verify(HWND window, GUID* action, void* argument) {
  auto& data = *static_cast<WINTRUST_DATA*>(argument);
  EXPECT_EQ(window, INVALID_HANDLE_VALUE);
  const GUID expectedAction = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  EXPECT_TRUE(IsEqualGUID(*action, expectedAction));
  EXPECT_EQ(data.dwUIChoice, 2u);
  EXPECT_EQ(data.fdwRevocationChecks, 0u);
  EXPECT_EQ(data.dwProvFlags, 0x1010u);
  const bool isFile = data.dwUnionChoice == WTD_CHOICE_FILE;
  if (data.dwStateAction == WTD_STATEACTION_CLOSE) {
    EXPECT_EQ(data.hWVTStateData, verificationState);
    fake->closed.push_back(data);
    fake->calls.push_back("close");
    SetLastError(4711);  // must not be taken for the error of the verification
    return 0;
  }
  EXPECT_EQ(data.dwStateAction, 1u);
  data.hWVTStateData = verificationState;
  if (isFile) {
    fake->calls.push_back("verify file");
    // Reads the file, as the real one does.
    SetFilePointer(data.pFile->hFile, 3, nullptr, FILE_BEGIN);
    SetLastError(fake->lastError);
    return static_cast<LONG>(fake->fileVerdict);
  }
  EXPECT_EQ(data.dwUnionChoice, DWORD{WTD_CHOICE_CATALOG});
  fake->calls.push_back("verify catalog");
  const WINTRUST_CATALOG_INFO& subject = *data.pCatalog;
  fake->catalogSubject = subject;
  fake->catalogPath = subject.pcwszCatalogFilePath;
  fake->memberTag = subject.pcwszMemberTag;
  fake->memberPath = subject.pcwszMemberFilePath;
  fake->memberHash.assign(subject.pbCalculatedFileHash,
                          subject.pbCalculatedFileHash + subject.cbCalculatedFileHash);
  return static_cast<LONG>(AnswersOf(subject.hCatAdmin).verdict);
}

CRYPT_PROVIDER_DATA* WINAPI GetProvider(HANDLE state) {
  static CRYPT_PROVIDER_DATA provider = {};
  EXPECT_EQ(state, verificationState);
  return &provider;
}

CRYPT_PROVIDER_SGNR* WINAPI GetSigner(CRYPT_PROVIDER_DATA*, DWORD index, BOOL counter, DWORD) {
  static const CERT_CONTEXT certificate = {};
  static CRYPT_PROVIDER_CERT chain = {.pCert = &certificate};
  static CRYPT_PROVIDER_SGNR signer = {.csCertChain = 1, .pasCertChain = &chain};
  EXPECT_EQ(index, 0u);
  EXPECT_FALSE(counter);
  return fake->namesSigner ? &signer : nullptr;
}

DWORD WINAPI GetName(PCCERT_CONTEXT, DWORD type, DWORD flags, void*, PWSTR buffer, DWORD size) {
  constexpr std::wstring_view name = L"A Maker of Systems";
  EXPECT_EQ(type, 4u);
  EXPECT_EQ(flags, 0u);
  if (buffer != nullptr) {
    EXPECT_EQ(size, name.size() + 1);
    *std::ranges::copy(name, buffer).out = L'\0';
  }
  return static_cast<DWORD>(name.size() + 1);
}

BOOL Acquire(HCATADMIN admin, const GUID* subsystem, HCATADMIN* result, const char* call) {
  const GUID driverVerification = DRIVER_ACTION_VERIFY;
  EXPECT_TRUE(IsEqualGUID(*subsystem, driverVerification));
  fake->calls.push_back(call);
  if (!AnswersOf(admin).acquires) return FALSE;
  *result = admin;
  return TRUE;
}

BOOL WINAPI AcquireClassic(HCATADMIN* admin, const GUID* subsystem, DWORD flags) {
  EXPECT_EQ(flags, 0u);
  return Acquire(classicAdmin, subsystem, admin, "acquire classic");
}

BOOL WINAPI AcquireSha256(HCATADMIN* admin, const GUID* subsystem, PCWSTR algorithm,
                          PCCERT_STRONG_SIGN_PARA policy, DWORD flags) {
  EXPECT_STREQ(algorithm, L"SHA256");
  EXPECT_EQ(policy, nullptr);
  EXPECT_EQ(flags, 0u);
  return Acquire(sha256Admin, subsystem, admin, "acquire SHA-256");
}

BOOL WINAPI ReleaseAdmin(HCATADMIN admin, DWORD) {
  fake->calls.push_back(admin == sha256Admin ? "release SHA-256" : "release classic");
  return TRUE;
}

// A hash of 32 or 20 bytes: F0 F1 F2 ...
BOOL Hash(HCATADMIN admin, HANDLE file, DWORD length, DWORD* size, BYTE* bytes) {
  EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 0u) << "hashed from its start";
  SetFilePointer(file, 2, nullptr, FILE_BEGIN);
  EXPECT_EQ(*size, 64u);
  fake->calls.push_back("hash");
  if (!AnswersOf(admin).hashes) return FALSE;
  *size = length;
  for (DWORD i = 0; i < length; ++i) bytes[i] = static_cast<BYTE>(0xF0 + i);
  return TRUE;
}

BOOL WINAPI HashClassic(HANDLE file, DWORD* size, BYTE* bytes, DWORD) {
  return Hash(classicAdmin, file, 20, size, bytes);
}

BOOL WINAPI HashSha256(HCATADMIN admin, HANDLE file, DWORD* size, BYTE* bytes, DWORD) {
  EXPECT_EQ(admin, sha256Admin);
  return Hash(admin, file, 32, size, bytes);
}

HCATINFO WINAPI FindCatalog(HCATADMIN admin, BYTE* hash, DWORD size, DWORD, HCATINFO* previous) {
  EXPECT_EQ(size, admin == sha256Admin ? 32u : 20u);
  EXPECT_EQ(hash[0], 0xF0);
  EXPECT_EQ(previous, nullptr);
  fake->calls.push_back("find");
  return AnswersOf(admin).finds ? catalogContext : nullptr;
}

// Called between FindCatalog and ReleaseCatalog of one kind of hash, so this is about the
// administrator that was acquired last.
BOOL WINAPI DescribeCatalog(HCATINFO context, CATALOG_INFO* info, DWORD) {
  EXPECT_EQ(context, catalogContext);
  EXPECT_EQ(info->cbStruct, 524u);
  fake->calls.push_back("describe");
  const bool isSha256 = std::ranges::count(fake->calls, "acquire classic") == 0;
  if (!(isSha256 ? fake->sha256 : fake->classic).describes) return FALSE;
  *std::ranges::copy(std::wstring_view(FakeCatalogPath), info->wszCatalogFile).out = L'\0';
  return TRUE;
}

BOOL WINAPI ReleaseCatalog(HCATADMIN, HCATINFO context, DWORD) {
  EXPECT_EQ(context, catalogContext);
  fake->calls.push_back("release catalog");
  return TRUE;
}

SignatureResult Check(FakeTrust& answers, const std::u16string& path) {
  fake = &answers;
  TrustFunctions functions = {
      .WinVerifyTrust = Verify,
      .WTHelperProvDataFromStateData = GetProvider,
      .WTHelperGetProvSignerFromChain = GetSigner,
      .CertGetNameStringW = GetName,
      .CryptCATAdminAcquireContext = AcquireClassic,
      .CryptCATAdminReleaseContext = ReleaseAdmin,
      .CryptCATAdminCalcHashFromFileHandle = HashClassic,
      .CryptCATAdminEnumCatalogFromHash = FindCatalog,
      .CryptCATCatalogInfoFromContext = DescribeCatalog,
      .CryptCATAdminReleaseCatalogContext = ReleaseCatalog,
      .CryptCATAdminAcquireContext2 = AcquireSha256,
      .CryptCATAdminCalcHashFromFileHandle2 = HashSha256,
  };
  if (!answers.sha256.hasFunctions) functions.CryptCATAdminCalcHashFromFileHandle2 = nullptr;
  const SignatureResult result = CheckSignatureWith(functions, path);
  fake = nullptr;
  return result;
}

using Calls = std::vector<std::string>;

// --- A catalog lists the file -------------------------------------------------------------------

TEST(SignatureCatalogTest, AListedFileHasTheVerdictOfItsCatalog) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"driver.sys", "content");
  FakeTrust answers;
  const SignatureResult result = Check(answers, path);
  EXPECT_EQ(result, (SignatureResult{.state = SignatureState::Valid,
                                     .signer = u"A Maker of Systems",
                                     .viaCatalog = true,
                                     .errorCode = 0}));
  EXPECT_EQ(answers.calls,
            (Calls{"verify file", "close", "acquire SHA-256", "hash", "find", "describe",
                   "verify catalog", "close", "release catalog", "release SHA-256"}));
  EXPECT_EQ(answers.catalogPath, FakeCatalogPath);
  EXPECT_EQ(answers.memberTag, L"F0F1F2F3F4F5F6F7F8F9FAFBFCFDFEFF000102030405060708090A0B0C0D0E0F");
  EXPECT_EQ(FromWide(answers.memberPath), ToLongPath(path));
  EXPECT_EQ(answers.memberHash.size(), 32u);
  EXPECT_EQ(answers.memberHash.back(), 0x0F);
  EXPECT_EQ(answers.catalogSubject.cbStruct, sizeof(WINTRUST_CATALOG_INFO));
  EXPECT_EQ(answers.catalogSubject.hCatAdmin, sha256Admin);
  EXPECT_EQ(answers.catalogSubject.dwCatalogVersion, 0u);
  EXPECT_EQ(answers.catalogSubject.pcCatalogContext, nullptr);
  EXPECT_NE(answers.catalogSubject.hMemberFile, nullptr);
}

TEST(SignatureCatalogTest, ABadVerdictOnACatalogEndsTheSearch) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"driver.sys", "content");
  struct VerdictCase {
    uint32_t verdict;
    SignatureState state;
  };
  for (const VerdictCase& row : {VerdictCase{BadDigest, SignatureState::Invalid},
                                 VerdictCase{UntrustedRoot, SignatureState::Untrusted},
                                 VerdictCase{NoSignature, SignatureState::Invalid}}) {
    SCOPED_TRACE(row.verdict);
    FakeTrust answers = {.sha256 = {.verdict = row.verdict}};
    const SignatureResult result = Check(answers, path);
    EXPECT_EQ(result.state, row.state);
    EXPECT_EQ(result.errorCode, row.verdict);
    EXPECT_TRUE(result.viaCatalog);
    EXPECT_EQ(std::ranges::count(answers.calls, "acquire classic"), 0);
  }
}

// --- A step fails -------------------------------------------------------------------------------

struct StepCase {
  const char* description;
  CatalogAnswers answers;
  Calls calls;  // for the kind of hash that fails
};

const StepCase stepCases[] = {
    {"an older system", {.hasFunctions = false}, {}},
    {"no administrator", {.acquires = false}, {"acquire"}},
    {"no hash", {.hashes = false}, {"acquire", "hash", "release"}},
    {"no catalog", {.finds = false}, {"acquire", "hash", "find", "release"}},
    {"a catalog without a description",
     {.describes = false},
     {"acquire", "hash", "find", "describe", "release catalog", "release"}},
};

Calls NamedFor(const char* kind, Calls calls) {
  for (std::string& call : calls) {
    if (call == "acquire" || call == "release") call += std::string(" ") + kind;
  }
  return calls;
}

TEST(SignatureCatalogTest, IfAStepFailsTheClassicHashIsTried) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"driver.sys", "content");
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.description);
    FakeTrust answers = {.sha256 = row.answers};
    const SignatureResult result = Check(answers, path);
    EXPECT_EQ(result.state, SignatureState::Valid);
    EXPECT_TRUE(result.viaCatalog);
    Calls expected = {"verify file", "close"};
    const auto append = [&](const Calls& calls) {
      expected.insert(expected.end(), calls.begin(), calls.end());
    };
    append(NamedFor("SHA-256", row.calls));
    append({"acquire classic", "hash", "find", "describe", "verify catalog", "close",
            "release catalog", "release classic"});
    EXPECT_EQ(answers.calls, expected);
    EXPECT_EQ(answers.memberTag, L"F0F1F2F3F4F5F6F7F8F9FAFBFCFDFEFF00010203");
    // Without its last field: 64 bytes in a 64-bit program.
    EXPECT_EQ(answers.catalogSubject.cbStruct, offsetof(WINTRUST_CATALOG_INFO, hCatAdmin));
    if (sizeof(void*) == 8) {
      EXPECT_EQ(answers.catalogSubject.cbStruct, 64u);
    }
  }
}

TEST(SignatureCatalogTest, WithoutACatalogTheVerdictOnTheFileIsKept) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"driver.sys", "content");
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.description);
    FakeTrust answers = {.sha256 = row.answers, .classic = row.answers};
    // The functions for the classic hash exist on every system.
    if (!row.answers.hasFunctions) answers.classic.finds = false;
    EXPECT_EQ(Check(answers, path),
              (SignatureResult{.state = SignatureState::NotSigned, .errorCode = NoSignature}));
  }
}

// --- Whether a catalog is searched for ----------------------------------------------------------

struct FileCase {
  uint32_t verdict;
  DWORD lastError;
  SignatureState state;
  bool isSearchedFor;
};

const FileCase fileCases[] = {
    {0, 0, SignatureState::Valid, false},
    {BadDigest, 0, SignatureState::Invalid, false},
    {UntrustedRoot, 0, SignatureState::Untrusted, false},
    {BadDigest, UnknownForm, SignatureState::Invalid, false},
    {NoSignature, 0, SignatureState::NotSigned, true},
    {NoSignature, NoSignature, SignatureState::NotSigned, true},
    {NoSignature, UnknownForm, SignatureState::NotApplicable, true},
    {NoSignature, UnknownProvider, SignatureState::NotApplicable, true},
    {UnknownForm, 0, SignatureState::NotApplicable, true},
    {UnknownProvider, 0, SignatureState::NotApplicable, true},
};

TEST(SignatureCatalogTest, CatalogsAreSearchedOnlyForAFileWithoutASignature) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"program.exe", "content");
  for (const FileCase& row : fileCases) {
    SCOPED_TRACE(::testing::Message() << std::hex << row.verdict << " with " << row.lastError);
    FakeTrust answers = {.fileVerdict = row.verdict,
                         .lastError = row.lastError,
                         .sha256 = {.finds = false},
                         .classic = {.finds = false}};
    EXPECT_EQ(Check(answers, path),
              (SignatureResult{.state = row.state,
                               .signer = row.isSearchedFor ? u"" : u"A Maker of Systems",
                               .errorCode = row.verdict}));
    EXPECT_EQ(std::ranges::count(answers.calls, "find"), row.isSearchedFor ? 2 : 0);
    ASSERT_FALSE(answers.closed.empty());
    EXPECT_EQ(answers.closed.front().dwUnionChoice, DWORD{WTD_CHOICE_FILE});
  }
}

TEST(SignatureCatalogTest, CatalogsAreNotSearchedForALongFile) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"large.exe");
  struct SizeCase {
    uint64_t size;
    bool isSearchedFor;
  };
  for (const SizeCase& row : {SizeCase{268435455, true}, SizeCase{268435456, true},
                              SizeCase{268435457, false}, SizeCase{uint64_t{5} << 30, false}}) {
    SCOPED_TRACE(row.size);
    ResizeFile(path, row.size);
    FakeTrust answers;
    const SignatureResult result = Check(answers, path);
    EXPECT_EQ(result.viaCatalog, row.isSearchedFor);
    EXPECT_EQ(result.state, row.isSearchedFor ? SignatureState::Valid : SignatureState::NotSigned);
  }
}

// The trust services reject such files as an invalid parameter, so they are not called.
TEST(SignatureCatalogTest, OnlyCatalogsAreSearchedForAFileOfAFewBytes) {
  TempTree tree;
  for (const char* content : {"", "M", "MZ", "MZ?"}) {
    SCOPED_TRACE(content);
    FakeTrust answers = {.fileVerdict = ERROR_INVALID_PARAMETER,
                         .sha256 = {.finds = false},
                         .classic = {.finds = false}};
    EXPECT_EQ(Check(answers, tree.AddFile(u"a.exe", content)).state, SignatureState::NotApplicable);
    EXPECT_EQ(std::ranges::count(answers.calls, "verify file"), 0);
    EXPECT_EQ(std::ranges::count(answers.calls, "find"), 2);
  }
  FakeTrust answers = {.fileVerdict = ERROR_INVALID_PARAMETER};
  EXPECT_EQ(Check(answers, tree.AddFile(u"a.exe", "MZ??")).state, SignatureState::Invalid);
}

// --- Missing names and functions ----------------------------------------------------------------

TEST(SignatureCatalogTest, ASignerWithoutANameIsEmpty) {
  TempTree tree;
  FakeTrust answers = {.fileVerdict = 0, .namesSigner = false};
  EXPECT_EQ(Check(answers, tree.AddFile(u"program.exe", "content")),
            (SignatureResult{.state = SignatureState::Valid}));
}

TEST(SignatureCatalogTest, WithMissingFunctionsTheResultIsUnknown) {
  TempTree tree;
  const SignatureResult result =
      CheckSignatureWith(TrustFunctions(), tree.AddFile(u"program.exe", "content"));
  EXPECT_EQ(result,
            (SignatureResult{.state = SignatureState::Unknown, .errorCode = ERROR_PROC_NOT_FOUND}));
}

}  // namespace
}  // namespace swr::testing
