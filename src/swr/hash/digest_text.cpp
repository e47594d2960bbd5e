#include "swr/hash/digest_text.h"

#include <algorithm>

namespace swr {
namespace {

template <typename Text>
void Append(std::span<const uint8_t> bytes, bool uppercase, Text& text) {
  using Unit = typename Text::value_type;
  const char* digits = uppercase ? "0123456789ABCDEF" : "0123456789abcdef";
  const size_t start = text.size();
  text.resize(start + bytes.size() * 2);
  Unit* out = text.data() + start;
  for (const uint8_t byte : bytes) {
    *out++ = static_cast<Unit>(digits[byte >> 4]);
    *out++ = static_cast<Unit>(digits[byte & 15]);
  }
}

template <typename Text>
Text ToHex(std::span<const uint8_t> bytes, bool uppercase) {
  Text text;
  Append(bytes, uppercase, text);
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

void AppendHex(std::span<const uint8_t> bytes, bool uppercase, std::string& text) {
  Append(bytes, uppercase, text);
}

void AppendHex(std::span<const uint8_t> bytes, bool uppercase, std::u16string& text) {
  Append(bytes, uppercase, text);
}

bool DigestEquals(const Digest& digest, std::span<const uint8_t> bytes) {
  return std::ranges::equal(digest.View(), bytes);
}

}  // namespace swr
