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

  bool AreAllThere() const {
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
                     !Cng().AreAllThere() ||
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

// BCryptHashData counts in 32 bits.
constexpr uint64_t LongestPiece = 0x40000000;

}  // namespace

// The hash handle works inside `objectBuffer` and so is declared behind it, to be destroyed first.
struct ProviderHash::State {
  std::vector<UCHAR> objectBuffer;
  ULONG digestLength = 0;
  UniqueHandle<HashHandleTraits> hash;
};

ProviderHash::ProviderHash(ProviderAlgorithm algorithm) : state_(std::make_unique<State>()) {
  const CngProvider& provider = GetProvider(algorithm);
  state_->digestLength = provider.digestLength;
  state_->objectBuffer.resize(provider.objectLength);
  BCRYPT_HASH_HANDLE hash = nullptr;
  const bool fails =
      InjectedFault(SystemCall::CreateDigest).has_value() ||
      Cng().createHash(provider.handle, &hash, state_->objectBuffer.data(),
                       static_cast<ULONG>(state_->objectBuffer.size()), nullptr, 0, 0) < 0;
  if (fails) throw std::runtime_error("BCryptCreateHash failed");
  state_->hash.Reset(hash);
}

ProviderHash::~ProviderHash() = default;

void ProviderHash::Update(const void* data, uint64_t size) {
  const UCHAR* piece = static_cast<const UCHAR*>(data);
  while (size > 0) {
    const ULONG length = static_cast<ULONG>(std::min(size, LongestPiece));
    // The parameter is not const, yet the call only reads.
    Cng().hashData(state_->hash.Get(), const_cast<UCHAR*>(piece), length, 0);
    piece += length;
    size -= length;
  }
}

uint8_t ProviderHash::Finish(std::array<uint8_t, 64>& bytes) {
  Cng().finishHash(state_->hash.Get(), bytes.data(), state_->digestLength, 0);
  return static_cast<uint8_t>(state_->digestLength);
}

}  // namespace swr
