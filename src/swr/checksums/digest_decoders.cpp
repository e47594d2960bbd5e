#include "swr/checksums/digest_decoders.h"

#include <array>
#include <cstddef>
#include <string>

#include "swr/text/text.h"

namespace swr {
namespace {

// The value of each hexadecimal digit by code unit, -1 for other units. A table, because long lists
// consist mostly of digits.
constexpr std::array<int8_t, 128> hexValues = [] {
  std::array<int8_t, 128> values = {};
  values.fill(-1);
  for (int8_t i = 0; i < 10; ++i) values[static_cast<size_t>(u'0' + i)] = i;
  for (int8_t i = 10; i < 16; ++i) {
    values[static_cast<size_t>(u'a' + i - 10)] = i;
    values[static_cast<size_t>(u'A' + i - 10)] = i;
  }
  return values;
}();

// The value of a hexadecimal digit, or -1.
int HexValue(char16_t unit) { return unit < hexValues.size() ? hexValues[unit] : -1; }

// The value of a base64 digit of either alphabet, or -1.
int Base64Value(char16_t unit) {
  if (unit >= u'A' && unit <= u'Z') return unit - u'A';
  if (unit >= u'a' && unit <= u'z') return unit - u'a' + 26;
  if (unit >= u'0' && unit <= u'9') return unit - u'0' + 52;
  if (unit == u'+' || unit == u'-') return 62;
  if (unit == u'/' || unit == u'_') return 63;
  return -1;
}

}  // namespace

std::optional<std::vector<uint8_t>> DecodeHexStrict(std::u16string_view text) {
  if (text.empty() || text.size() % 2 != 0) return std::nullopt;
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() / 2);
  for (size_t i = 0; i < text.size(); i += 2) {
    const int high = HexValue(text[i]);
    const int low = HexValue(text[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<uint8_t>(high * 16 + low));
  }
  return bytes;
}

std::optional<std::vector<uint8_t>> DecodeHexLoose(std::u16string_view text, HyphenRule hyphens) {
  text = TrimText(text);
  if (text.size() >= 3 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X')) {
    text.remove_prefix(2);
  }
  std::u16string digits;
  for (const char16_t unit : text) {
    if (HexValue(unit) >= 0) {
      digits += unit;
    } else if (unit == u'-' ? hyphens == HyphenRule::Reject
                            : unit != u'\t' && unit != u' ' && unit != u':') {
      return std::nullopt;
    }
  }
  return DecodeHexStrict(digits);
}

std::optional<std::vector<uint8_t>> DecodeBase64(std::u16string_view text) {
  text = TrimText(text);
  while (text.ends_with(u'=')) text.remove_suffix(1);
  if (text.empty() || text.size() % 4 == 1) return std::nullopt;
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() * 3 / 4);
  uint32_t bits = 0;
  int count = 0;
  for (const char16_t unit : text) {
    const int value = Base64Value(unit);
    if (value < 0) return std::nullopt;
    bits = bits << 6 | static_cast<uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      bytes.push_back(static_cast<uint8_t>(bits >> count));
    }
  }
  return bytes;
}

}  // namespace swr
