#include "swr/hash/digest_text.h"

#include <algorithm>
#include <string_view>

namespace swr {
namespace {

template <typename Text>
Text ToHex(std::span<const uint8_t> bytes, bool uppercase) {
  const std::string_view digits = uppercase ? "0123456789ABCDEF" : "0123456789abcdef";
  Text text(bytes.size() * 2, 0);
  for (size_t i = 0; i < bytes.size(); ++i) {
    text[2 * i] = static_cast<typename Text::value_type>(digits[bytes[i] >> 4]);
    text[2 * i + 1] = static_cast<typename Text::value_type>(digits[bytes[i] & 15]);
  }
  return text;
}

}  // namespace

std::string BytesToHex(std::span<const uint8_t> bytes, bool uppercase) {
  return ToHex<std::string>(bytes, uppercase);
}

std::string DigestToHex(const Digest& digest, bool uppercase) {
  return ToHex<std::string>(digest.View(), uppercase);
}

std::u16string DigestToWideHex(const Digest& digest, bool uppercase) {
  return ToHex<std::u16string>(digest.View(), uppercase);
}

bool DigestEquals(const Digest& digest, std::span<const uint8_t> bytes) {
  return std::ranges::equal(digest.View(), bytes);
}

}  // namespace swr
