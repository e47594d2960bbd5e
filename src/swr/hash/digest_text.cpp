#include "swr/hash/digest_text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace swr {
namespace {

// The two digits of each byte, so that a byte needs one lookup instead of two: texts of a million
// digests are made at once.
template <typename Unit>
using DigitPairs = std::array<std::array<Unit, 2>, 256>;

template <typename Unit>
constexpr DigitPairs<Unit> MakeDigitPairs(std::string_view digits) {
  DigitPairs<Unit> pairs = {};
  for (size_t byte = 0; byte < pairs.size(); ++byte) {
    pairs[byte] = {static_cast<Unit>(digits[byte >> 4]), static_cast<Unit>(digits[byte & 15])};
  }
  return pairs;
}

template <typename Unit>
constexpr DigitPairs<Unit> LowercasePairs = MakeDigitPairs<Unit>("0123456789abcdef");
template <typename Unit>
constexpr DigitPairs<Unit> UppercasePairs = MakeDigitPairs<Unit>("0123456789ABCDEF");

template <typename Text>
void Append(std::span<const uint8_t> bytes, bool uppercase, Text& text) {
  using Unit = typename Text::value_type;
  const DigitPairs<Unit>& pairs = uppercase ? UppercasePairs<Unit> : LowercasePairs<Unit>;
  const size_t start = text.size();
  text.resize(start + bytes.size() * 2);
  Unit* out = text.data() + start;
  for (const uint8_t byte : bytes) {
    out = std::ranges::copy(pairs[byte], out).out;
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
