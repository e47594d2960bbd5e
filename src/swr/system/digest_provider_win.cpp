#include "swr/system/digest_provider.h"

#include "swr/system/windows_api_win.h"

#include <bcrypt.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "swr/system/fault_injection.h"
#include "swr/system/system_library_win.h"
#include "swr/system/unique_handle.h"

namespace swr {
namespace {

SystemFunction FindInBcrypt(const char* name) { return FindSystemFunction(L"bcrypt.dll", name); }

struct CngFunctions {
  decltype(&BCryptOpenAlgorithmProvider) openProvider = FindInBcrypt("BCryptOpenAlgorithmProvider");
  decltype(&BCryptGetProperty) getProperty = FindInBcrypt("BCryptGetProperty");
  decltype(&BCryptCreateHash) createHash = FindInBcrypt("BCryptCreateHash");
  decltype(&BCryptHashData) hashData = FindInBcrypt("BCryptHashData");
  decltype(&BCryptFinishHash) finishHash = FindInBcrypt("BCryptFinishHash");
  decltype(&BCryptDestroyHash) destroyHash = FindInBcrypt("BCryptDestroyHash");

  bool AreComplete() const {
    return openProvider && getProperty && createHash && hashData && finishHash && destroyHash;
  }
};

const CngFunctions& Cng() {
  static const CngFunctions functions;
  return functions;
}

// One algorithm's provider, opened at its first use and kept until the process ends.
struct CngProvider {
  const wchar_t* algorithmName;
  INIT_ONCE once = INIT_ONCE_STATIC_INIT;
  BCRYPT_ALG_HANDLE handle = nullptr;
  ULONG objectLength = 0;
  ULONG digestLength = 0;
};

CngProvider providers[ProviderAlgorithmCount] = {{L"MD2"},    {L"MD4"},    {L"MD5"},   {L"SHA1"},
                                                 {L"SHA256"}, {L"SHA384"}, {L"SHA512"}};

ULONG ReadProperty(BCRYPT_ALG_HANDLE handle, const wchar_t* name) {
  ULONG value = 0;
  ULONG written = 0;
  Cng().getProperty(handle, name, reinterpret_cast<UCHAR*>(&value), sizeof value, &written, 0);
  return value;
}

void Open(CngProvider& provider) {
  BCRYPT_ALG_HANDLE handle = nullptr;
  const bool fails = InjectedFault(SystemCall::OpenDigestProvider).has_value() ||
                     !Cng().AreComplete() ||
                     Cng().openProvider(&handle, provider.algorithmName, nullptr, 0) < 0;
  if (fails) return;
  provider.handle = handle;
  provider.objectLength = ReadProperty(handle, BCRYPT_OBJECT_LENGTH);
  provider.digestLength = ReadProperty(handle, BCRYPT_HASH_LENGTH);
}

const CngProvider& GetProvider(ProviderAlgorithm algorithm) {
  CngProvider& provider = providers[static_cast<size_t>(algorithm)];
  BOOL isFirst = FALSE;
  if (!InitOnceBeginInitialize(&provider.once, 0, &isFirst, nullptr)) std::abort();
  if (isFirst) {
    Open(provider);
    if (!InitOnceComplete(&provider.once, 0, nullptr)) std::abort();
  }
  if (provider.handle == nullptr) {
    throw std::runtime_error("Windows cryptography provider unavailable");
  }
  return provider;
}

struct HashHandleTraits {
  using Value = BCRYPT_HASH_HANDLE;
  static constexpr BCRYPT_HASH_HANDLE Invalid = nullptr;
  static void Close(BCRYPT_HASH_HANDLE value) noexcept { Cng().destroyHash(value); }
};

// BCryptHashData takes a 32-bit length.
constexpr uint64_t LongestPiece = 0x40000000;

}  // namespace

// The hash handle uses `objectBuffer`, so it is declared after it in order to be destroyed first.
struct ProviderHash::State {
  explicit State(const CngProvider& openProvider)
      : provider(openProvider), objectBuffer(openProvider.objectLength) {}

  void MakeHash();
  bool TryToMakeHash(ULONG flags);
  void Note(NTSTATUS status) { hasFailed = hasFailed || status < 0; }

  const CngProvider& provider;
  std::vector<UCHAR> objectBuffer;
  UniqueHandle<HashHandleTraits> hash;
  bool isReusable = true;  // finishing the hash makes it ready for the next file
  bool isUsed = false;     // since it was made or finished
  bool hasFailed = false;  // a call failed, so the next digest could include data of this one
};

// Replaces the hash, if there is one. Windows 7 can't create reusable hashes.
void ProviderHash::State::MakeHash() {
  hash.Reset();
  isUsed = false;
  hasFailed = false;
  if (!InjectedFault(SystemCall::CreateDigest)) {
    isReusable = isReusable && !InjectedFault(SystemCall::CreateReusableDigest) &&
                 TryToMakeHash(BCRYPT_HASH_REUSABLE_FLAG);
    if (isReusable || TryToMakeHash(0)) return;
  }
  throw std::runtime_error("BCryptCreateHash failed");
}

bool ProviderHash::State::TryToMakeHash(ULONG flags) {
  BCRYPT_HASH_HANDLE made = nullptr;
  const NTSTATUS status =
      Cng().createHash(provider.handle, &made, objectBuffer.data(),
                       static_cast<ULONG>(objectBuffer.size()), nullptr, 0, flags);
  if (status < 0) return false;
  hash.Reset(made);
  return true;
}

const size_t ProviderHash::EfficientPiece = 16384;

ProviderHash::ProviderHash(ProviderAlgorithm algorithm)
    : state_(std::make_unique<State>(GetProvider(algorithm))) {
  state_->MakeHash();
}

void ProviderHash::Restart() {
  if (state_->isReusable && state_->isUsed) {
    std::array<uint8_t, 64> unwanted;
    Finish(unwanted);
  }
  if (!state_->isReusable || state_->hasFailed) state_->MakeHash();
}

ProviderHash::~ProviderHash() = default;

void ProviderHash::Update(const void* data, uint64_t size) {
  state_->isUsed = true;
  const UCHAR* piece = static_cast<const UCHAR*>(data);
  while (size > 0) {
    const ULONG length = static_cast<ULONG>(std::min(size, LongestPiece));
    // The parameter is not const, but the call only reads.
    state_->Note(Cng().hashData(state_->hash.Get(), const_cast<UCHAR*>(piece), length, 0));
    piece += length;
    size -= length;
  }
}

uint8_t ProviderHash::Finish(std::array<uint8_t, 64>& bytes) {
  const ULONG length = state_->provider.digestLength;
  state_->Note(Cng().finishHash(state_->hash.Get(), bytes.data(), length, 0));
  state_->isUsed = false;
  return static_cast<uint8_t>(length);
}

}  // namespace swr
