#include "swr/system/digest_provider.h"

// Uses the low-level functions instead of the EVP interface that OpenSSL recommends: EVP reads a
// configuration file and builds tables of providers, which takes longer than hashing a small file,
// and allocates memory for each file.
#define OPENSSL_SUPPRESS_DEPRECATED

#include <nettle/md2.h>
#include <nettle/md4.h>
#include <openssl/md5.h>
#include <openssl/sha.h>

#include <mutex>
#include <stdexcept>
#include <variant>

#include "swr/system/fault_injection.h"

namespace swr {
namespace {

// One algorithm's provider, opened at its first use and kept until the process ends. There is
// nothing to open here, but tests can make it fail as on Windows.
struct Provider {
  std::once_flag once = {};
  bool isOpen = false;
};

Provider providers[ProviderAlgorithmCount];

void OpenProvider(ProviderAlgorithm algorithm) {
  Provider& provider = providers[static_cast<size_t>(algorithm)];
  std::call_once(provider.once, [&] {
    provider.isOpen = !InjectedFault(SystemCall::OpenDigestProvider).has_value();
  });
  if (!provider.isOpen) throw std::runtime_error("Windows cryptography provider unavailable");
}

// OpenSSL uses the same structure for SHA-384 and SHA-512; separate types distinguish them.
struct Sha384State : SHA512_CTX {};
struct Sha512State : SHA512_CTX {};

struct StartDigest {
  void operator()(md2_ctx& c) const { md2_init(&c); }
  void operator()(md4_ctx& c) const { md4_init(&c); }
  void operator()(MD5_CTX& c) const { MD5_Init(&c); }
  void operator()(SHA_CTX& c) const { SHA1_Init(&c); }
  void operator()(SHA256_CTX& c) const { SHA256_Init(&c); }
  void operator()(Sha384State& c) const { SHA384_Init(&c); }
  void operator()(Sha512State& c) const { SHA512_Init(&c); }
};

struct UpdateDigest {
  const uint8_t* data;
  size_t size;

  void operator()(md2_ctx& c) const { md2_update(&c, size, data); }
  void operator()(md4_ctx& c) const { md4_update(&c, size, data); }
  void operator()(MD5_CTX& c) const { MD5_Update(&c, data, size); }
  void operator()(SHA_CTX& c) const { SHA1_Update(&c, data, size); }
  void operator()(SHA256_CTX& c) const { SHA256_Update(&c, data, size); }
  void operator()(Sha384State& c) const { SHA384_Update(&c, data, size); }
  void operator()(Sha512State& c) const { SHA512_Update(&c, data, size); }
};

// Returns the length of the digest.
struct FinishDigest {
  uint8_t* bytes;

  uint8_t operator()(md2_ctx& c) const {
    md2_digest(&c, MD2_DIGEST_SIZE, bytes);
    return MD2_DIGEST_SIZE;
  }
  uint8_t operator()(md4_ctx& c) const {
    md4_digest(&c, MD4_DIGEST_SIZE, bytes);
    return MD4_DIGEST_SIZE;
  }
  uint8_t operator()(MD5_CTX& c) const {
    MD5_Final(bytes, &c);
    return MD5_DIGEST_LENGTH;
  }
  uint8_t operator()(SHA_CTX& c) const {
    SHA1_Final(bytes, &c);
    return SHA_DIGEST_LENGTH;
  }
  uint8_t operator()(SHA256_CTX& c) const {
    SHA256_Final(bytes, &c);
    return SHA256_DIGEST_LENGTH;
  }
  uint8_t operator()(Sha384State& c) const {
    SHA384_Final(bytes, &c);
    return SHA384_DIGEST_LENGTH;
  }
  uint8_t operator()(Sha512State& c) const {
    SHA512_Final(bytes, &c);
    return SHA512_DIGEST_LENGTH;
  }
};

}  // namespace

struct ProviderHash::State {
  std::variant<md2_ctx, md4_ctx, MD5_CTX, SHA_CTX, SHA256_CTX, Sha384State, Sha512State> context;
};

const size_t ProviderHash::EfficientPiece = 2048;

ProviderHash::ProviderHash(ProviderAlgorithm algorithm) : state_(std::make_unique<State>()) {
  OpenProvider(algorithm);
  switch (algorithm) {
    case ProviderAlgorithm::Md2:
      state_->context.emplace<md2_ctx>();
      break;
    case ProviderAlgorithm::Md4:
      state_->context.emplace<md4_ctx>();
      break;
    case ProviderAlgorithm::Md5:
      state_->context.emplace<MD5_CTX>();
      break;
    case ProviderAlgorithm::Sha1:
      state_->context.emplace<SHA_CTX>();
      break;
    case ProviderAlgorithm::Sha256:
      state_->context.emplace<SHA256_CTX>();
      break;
    case ProviderAlgorithm::Sha384:
      state_->context.emplace<Sha384State>();
      break;
    case ProviderAlgorithm::Sha512:
      state_->context.emplace<Sha512State>();
      break;
  }
  Restart();
}

ProviderHash::~ProviderHash() = default;

void ProviderHash::Restart() {
  if (InjectedFault(SystemCall::CreateDigest)) throw std::runtime_error("BCryptCreateHash failed");
  std::visit(StartDigest(), state_->context);
}

void ProviderHash::Update(const void* data, uint64_t size) {
  std::visit(UpdateDigest{static_cast<const uint8_t*>(data), static_cast<size_t>(size)},
             state_->context);
}

uint8_t ProviderHash::Finish(std::array<uint8_t, 64>& bytes) {
  return std::visit(FinishDigest{bytes.data()}, state_->context);
}

}  // namespace swr
