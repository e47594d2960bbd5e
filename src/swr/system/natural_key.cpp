#include "swr/system/natural_key.h"

#include <algorithm>
#include <array>

#include "swr/system/text_services.h"

namespace swr {
namespace {

constexpr bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// A unit's place in the natural order: punctuation, digits (see AppendNaturalKey), the letters of
// ASCII, all others by number.
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

}  // namespace

// A run of digits becomes a mark, the number of digits without leading zeros, and these digits: a
// longer number is a larger one.
void AppendNaturalKey(std::u16string_view text, std::u16string& key) {
  // Long enough for any text, and made shorter at the end: adding one unit at a time takes longer
  // than finding it.
  const size_t start = key.size();
  key.resize(start + 3 * text.size());
  char16_t* out = key.data() + start;
  for (size_t i = 0; i < text.size();) {
    if (!IsDigit(text[i])) {
      *out++ = NaturalWeight(text[i++]);
      continue;
    }
    while (i + 1 < text.size() && text[i] == u'0' && IsDigit(text[i + 1])) ++i;
    size_t end = i;
    while (end < text.size() && IsDigit(text[end])) ++end;
    *out++ = NumberMark;
    *out++ = static_cast<char16_t>(std::min<size_t>(end - i, 0xFFFF));
    out = std::ranges::copy(text.substr(i, end - i), out).out;
    i = end;
  }
  key.resize(static_cast<size_t>(out - key.data()));
}

}  // namespace swr
