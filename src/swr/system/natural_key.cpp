#include "swr/system/natural_key.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "swr/system/text_services.h"

namespace swr {
namespace {

constexpr bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// A unit's place in the natural order: punctuation, digits (see AppendNaturalKey), the letters of
// ASCII, all others by code unit.
constexpr char16_t NumberMark = 0x80;

constexpr auto AsciiWeights = [] {
  std::array<char16_t, 0x80> weights = {};
  for (char16_t unit = 0; unit < weights.size(); ++unit) {
    weights[unit] = unit;
    if (unit >= u'A' && unit <= u'Z') {
      weights[unit] = static_cast<char16_t>(NumberMark + 1 + unit - u'A');
    } else if (unit >= u'a' && unit <= u'z') {
      weights[unit] = static_cast<char16_t>(NumberMark + 1 + unit - u'a');
    }
  }
  return weights;
}();

char16_t NaturalWeight(char16_t unit) {
  if (unit < AsciiWeights.size()) return AsciiWeights[unit];
  const char16_t upper = SystemUpperUnit(unit);
  if (upper < AsciiWeights.size()) return AsciiWeights[upper];
  return static_cast<char16_t>(std::min<char32_t>(char32_t{upper} + 0x80, 0xFFFF));
}

// Most units become one byte, the others four. The bytes compare like the units, and none is zero.
constexpr char16_t FirstLongUnit = 0xFE;

char* PutUnit(uint32_t unit, char* out) {
  const auto put = [&](uint32_t value) { *out++ = static_cast<char>(value); };
  if (unit < FirstLongUnit) {
    put(unit + 1);
  } else {
    put(0xFF);
    put(1 + (unit >> 14));
    put(1 + (unit >> 7 & 0x7F));
    put(1 + (unit & 0x7F));
  }
  return out;
}

}  // namespace

// A run of digits becomes a mark, the number of digits without leading zeros, and these digits: a
// longer number is a larger one.
std::string_view MakeNaturalKey(std::u16string_view text, std::string& buffer, size_t enough) {
  // Enough for any text: a run of digits adds two units to its own.
  if (buffer.size() < 6 * text.size()) buffer.resize(6 * text.size());
  const auto size = [&](const char* end) { return static_cast<size_t>(end - buffer.data()); };
  char* out = buffer.data();
  for (size_t i = 0; i < text.size() && size(out) < enough;) {
    if (!IsDigit(text[i])) {
      out = PutUnit(NaturalWeight(text[i++]), out);
      continue;
    }
    while (i + 1 < text.size() && text[i] == u'0' && IsDigit(text[i + 1])) ++i;
    size_t end = i;
    while (end < text.size() && IsDigit(text[end])) ++end;
    out = PutUnit(NumberMark, out);
    out = PutUnit(static_cast<uint32_t>(std::min<size_t>(end - i, 0xFFFF)), out);
    for (; i < end; ++i) *out++ = static_cast<char>(text[i] + 1);
  }
  return {buffer.data(), size(out)};
}

}  // namespace swr
