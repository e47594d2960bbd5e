#include "swr/hash/hasher.h"

#define XXH_STATIC_LINKING_ONLY  // complete state types

#include <blake3.h>
#ifdef SWR_XXHASH_DISPATCH
#include <xxh_x86dispatch.h>
#else
#include <xxhash.h>
#endif

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <stdexcept>

#include "swr/hash/crc32.h"
#include "swr/hash/keccak.h"
#include "swr/system/digest_provider.h"

namespace swr {
namespace {

class CngHasher final : public Hasher {
 public:
  explicit CngHasher(ProviderAlgorithm algorithm) : hash_(algorithm) {}
  void Update(const void* data, uint64_t size) override { hash_.Update(data, size); }
  size_t EfficientPiece() const override { return ProviderHash::EfficientPiece; }
  Digest Final() override {
    Digest digest;
    digest.length = hash_.Finish(digest.bytes);
    return digest;
  }
  void Reset() override { hash_.Restart(); }

 private:
  ProviderHash hash_;
};

class Crc32Hasher final : public Hasher {
 public:
  void Update(const void* data, uint64_t size) override {
    state_ = Crc32Update(state_, static_cast<const uint8_t*>(data), size);
  }
  Digest Final() override {
    const uint32_t value = ~state_;
    Digest digest{.length = 4};
    for (size_t i = 0; i < 4; ++i) digest.bytes[i] = static_cast<uint8_t>(value >> (24 - 8 * i));
    return digest;
  }
  void Reset() override { state_ = Crc32Start; }

 private:
  uint32_t state_ = Crc32Start;
};

class Sha3Hasher final : public Hasher {
 public:
  // Both in bytes. The rate is larger than the digest, so one squeeze is enough.
  Sha3Hasher(uint32_t digestSize, uint32_t rate) : digestSize_(digestSize), rate_(rate) {}

  void Update(const void* data, uint64_t size) override {
    const auto* bytes = static_cast<const uint8_t*>(data);
    while (size > 0) {
      if (position_ == 0 && size >= rate_) {
        const uint64_t blocks = size / rate_;
        KeccakAbsorb(lanes_, bytes, blocks, rate_);
        bytes += blocks * rate_;
        size -= blocks * rate_;
        continue;
      }
      const auto n = static_cast<uint32_t>(std::min<uint64_t>(rate_ - position_, size));
      for (uint32_t i = 0; i < n; ++i) XorByte(position_ + i, bytes[i]);
      bytes += n;
      size -= n;
      position_ += n;
      if (position_ == rate_) {
        KeccakF1600(lanes_);
        position_ = 0;
      }
    }
  }

  // The bytes of incomplete blocks are absorbed one by one.
  size_t EfficientPiece() const override { return 16384; }

  Digest Final() override {
    XorByte(position_, 0x06);  // the domain of SHA-3 and the first padding bit
    XorByte(rate_ - 1, 0x80);  // the last padding bit
    KeccakF1600(lanes_);
    Digest digest{.length = static_cast<uint8_t>(digestSize_)};
    std::memcpy(digest.bytes.data(), lanes_.data(), digestSize_);
    return digest;
  }

  void Reset() override {
    lanes_ = {};
    position_ = 0;
  }

 private:
  void XorByte(uint32_t index, uint8_t value) {
    lanes_[index / 8] ^= uint64_t{value} << (8 * (index % 8));
  }

  KeccakLanes lanes_ = {};
  uint32_t digestSize_;
  uint32_t rate_;
  uint32_t position_ = 0;  // bytes absorbed into the current block
};

// BLAKE3 and xxHash choose among their processor variants at the first use, without a lock. Using
// each once here, under a lock, keeps two hashing threads from choosing at the same time.
void ChooseBlake3Variant() {
  static const bool chosen = [] {
    blake3_hasher state;
    std::array<uint8_t, BLAKE3_OUT_LEN> bytes;
    blake3_hasher_init(&state);
    blake3_hasher_finalize(&state, bytes.data(), bytes.size());
    return true;
  }();
  static_cast<void>(chosen);
}

void ChooseXxh3Variant(XXH3_state_t& state) {
  static const bool chosen = XXH3_64bits_update(&state, "", 0) == XXH_OK;
  static_cast<void>(chosen);
}

class Blake3Hasher final : public Hasher {
 public:
  Blake3Hasher() {
    ChooseBlake3Variant();
    Blake3Hasher::Reset();
  }
  void Update(const void* data, uint64_t size) override {
    blake3_hasher_update(&state_, data, static_cast<size_t>(size));
  }
  // The widest variant digests sixteen chunks of 1 KiB at once.
  size_t EfficientPiece() const override { return 16 * BLAKE3_CHUNK_LEN; }
  Digest Final() override {
    Digest digest{.length = BLAKE3_OUT_LEN};
    blake3_hasher_finalize(&state_, digest.bytes.data(), BLAKE3_OUT_LEN);
    return digest;
  }
  void Reset() override { blake3_hasher_init(&state_); }

 private:
  blake3_hasher state_;
};

Digest CanonicalDigest(XXH64_hash_t value) {
  XXH64_canonical_t canonical;
  XXH64_canonicalFromHash(&canonical, value);
  Digest digest{.length = sizeof canonical};
  std::memcpy(digest.bytes.data(), &canonical, sizeof canonical);
  return digest;
}

class Xxh64Hasher final : public Hasher {
 public:
  Xxh64Hasher() { Xxh64Hasher::Reset(); }
  void Update(const void* data, uint64_t size) override {
    XXH64_update(&state_, data, static_cast<size_t>(size));
  }
  Digest Final() override { return CanonicalDigest(XXH64_digest(&state_)); }
  void Reset() override { XXH64_reset(&state_, 0); }

 private:
  XXH64_state_t state_;
};

class Xxh3Hasher final : public Hasher {
 public:
  explicit Xxh3Hasher(bool wide) : wide_(wide), state_(XXH3_createState()) {
    if (!state_) throw std::bad_alloc();
    Xxh3Hasher::Reset();
    ChooseXxh3Variant(*state_);
  }
  // Reset and update are the same for both widths; only the digest differs.
  void Update(const void* data, uint64_t size) override {
    XXH3_64bits_update(state_.get(), data, static_cast<size_t>(size));
  }
  Digest Final() override {
    if (!wide_) return CanonicalDigest(XXH3_64bits_digest(state_.get()));
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(state_.get()));
    Digest digest{.length = sizeof canonical};
    std::memcpy(digest.bytes.data(), &canonical, sizeof canonical);
    return digest;
  }
  void Reset() override { XXH3_64bits_reset(state_.get()); }

 private:
  struct StateDeleter {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
  };
  bool wide_;
  std::unique_ptr<XXH3_state_t, StateDeleter> state_;
};

}  // namespace

std::unique_ptr<Hasher> MakeHasher(AlgoId id) {
  switch (id) {
    case AlgoId::Crc32:
      return std::make_unique<Crc32Hasher>();
    case AlgoId::Md5:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Md5);
    case AlgoId::Sha1:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Sha1);
    case AlgoId::Sha256:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Sha256);
    case AlgoId::Sha384:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Sha384);
    case AlgoId::Sha512:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Sha512);
    case AlgoId::Sha3_256:
      return std::make_unique<Sha3Hasher>(32, 136);
    case AlgoId::Sha3_384:
      return std::make_unique<Sha3Hasher>(48, 104);
    case AlgoId::Sha3_512:
      return std::make_unique<Sha3Hasher>(64, 72);
    case AlgoId::Blake3:
      return std::make_unique<Blake3Hasher>();
    case AlgoId::Xxh64:
      return std::make_unique<Xxh64Hasher>();
    case AlgoId::Xxh3_64:
      return std::make_unique<Xxh3Hasher>(false);
    case AlgoId::Xxh128:
      return std::make_unique<Xxh3Hasher>(true);
    case AlgoId::Md2:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Md2);
    case AlgoId::Md4:
      return std::make_unique<CngHasher>(ProviderAlgorithm::Md4);
  }
  throw std::runtime_error("unknown algorithm");
}

Digest HashBytes(AlgoId id, std::span<const uint8_t> bytes) {
  const std::unique_ptr<Hasher> hasher = MakeHasher(id);
  hasher->Update(bytes.data(), bytes.size());
  return hasher->Final();
}

}  // namespace swr
