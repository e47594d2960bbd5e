#include "swr/system/digest_provider.h"

#include <nettle/md2.h>
#include <nettle/md4.h>
#include <openssl/evp.h>

#include <mutex>
#include <stdexcept>
#include <variant>

#include "swr/system/fault_injection.h"
#include "swr/system/unique_handle.h"

namespace swr {
namespace {

// One algorithm's provider, opened at its first use and kept until the process ends. OpenSSL has
// no name for the two that Nettle serves.
struct CngProvider {
  const char* opensslName;
  std::once_flag once = {};
  EVP_MD* digest = nullptr;
  bool isOpen = false;
};

CngProvider providers[ProviderAlgorithmCount] = {{nullptr},    {nullptr},    {"MD5"},     {"SHA1"},
                                                 {"SHA2-256"}, {"SHA2-384"}, {"SHA2-512"}};

void Open(CngProvider& provider) {
  if (InjectedFault(SystemCall::OpenDigestProvider)) return;
  if (provider.opensslName != nullptr) {
    provider.digest = EVP_MD_fetch(nullptr, provider.opensslName, nullptr);
    if (provider.digest == nullptr) return;
  }
  provider.isOpen = true;
}

const CngProvider& GetProvider(ProviderAlgorithm algorithm) {
  CngProvider& provider = providers[static_cast<size_t>(algorithm)];
  std::call_once(provider.once, [&] { Open(provider); });
  if (!provider.isOpen) throw std::runtime_error("Windows cryptography provider unavailable");
  return provider;
}

struct DigestContextTraits {
  using Value = EVP_MD_CTX*;
  static constexpr EVP_MD_CTX* Invalid = nullptr;
  static void Close(EVP_MD_CTX* value) noexcept { EVP_MD_CTX_free(value); }
};
using DigestContext = UniqueHandle<DigestContextTraits>;

}  // namespace

struct ProviderHash::State {
  std::variant<DigestContext, md2_ctx, md4_ctx> context;
};

ProviderHash::ProviderHash(ProviderAlgorithm algorithm) : state_(std::make_unique<State>()) {
  const CngProvider& provider = GetProvider(algorithm);
  bool succeeds = !InjectedFault(SystemCall::CreateDigest);
  if (algorithm == ProviderAlgorithm::Md2) {
    md2_init(&state_->context.emplace<md2_ctx>());
  } else if (algorithm == ProviderAlgorithm::Md4) {
    md4_init(&state_->context.emplace<md4_ctx>());
  } else {
    DigestContext& context = std::get<DigestContext>(state_->context);
    context.Reset(EVP_MD_CTX_new());
    succeeds = succeeds && context && EVP_DigestInit_ex2(context.Get(), provider.digest, nullptr);
  }
  if (!succeeds) throw std::runtime_error("BCryptCreateHash failed");
}

ProviderHash::~ProviderHash() = default;

void ProviderHash::Update(const void* data, uint64_t size) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  if (auto* md2 = std::get_if<md2_ctx>(&state_->context)) {
    md2_update(md2, size, bytes);
  } else if (auto* md4 = std::get_if<md4_ctx>(&state_->context)) {
    md4_update(md4, size, bytes);
  } else {
    EVP_DigestUpdate(std::get<DigestContext>(state_->context).Get(), bytes, size);
  }
}

uint8_t ProviderHash::Finish(std::array<uint8_t, 64>& bytes) {
  if (auto* md2 = std::get_if<md2_ctx>(&state_->context)) {
    md2_digest(md2, MD2_DIGEST_SIZE, bytes.data());
    return MD2_DIGEST_SIZE;
  }
  if (auto* md4 = std::get_if<md4_ctx>(&state_->context)) {
    md4_digest(md4, MD4_DIGEST_SIZE, bytes.data());
    return MD4_DIGEST_SIZE;
  }
  unsigned int length = 0;
  EVP_DigestFinal_ex(std::get<DigestContext>(state_->context).Get(), bytes.data(), &length);
  return static_cast<uint8_t>(length);
}

}  // namespace swr
