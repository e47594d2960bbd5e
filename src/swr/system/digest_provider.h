// The platform's provider of MD2, MD4, MD5, SHA-1 and SHA-2: bcrypt on Windows, OpenSSL and Nettle
// elsewhere.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace swr {

enum class ProviderAlgorithm : uint8_t { Md2, Md4, Md5, Sha1, Sha256, Sha384, Sha512 };
inline constexpr size_t ProviderAlgorithmCount = 7;

// One hash computation of the provider. Used by one thread at a time; many may run at once. The
// provider of an algorithm is opened once per process, at its first use; if that fails, so does
// every later use.
class ProviderHash {
 public:
  // The length of an Update, in bytes, from which the cost of the call itself is negligible.
  static const size_t EfficientPiece;

  // Throws std::runtime_error "Windows cryptography provider unavailable" if the algorithm's
  // provider can't be opened, and "BCryptCreateHash failed" if it can't create a hash object.
  explicit ProviderHash(ProviderAlgorithm algorithm);
  ~ProviderHash();
  ProviderHash(const ProviderHash&) = delete;
  ProviderHash& operator=(const ProviderHash&) = delete;

  void Update(const void* data, uint64_t size);
  // Writes the digest to the start of `bytes` and returns its length. After it, only Restart may be
  // called.
  uint8_t Finish(std::array<uint8_t, 64>& bytes);
  // Returns the hash to its initial state, whether it was finished or not. Throws
  // std::runtime_error "BCryptCreateHash failed" if the provider refuses; then the object can
  // only be destroyed.
  void Restart();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace swr
