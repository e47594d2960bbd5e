#include "swr/text/display_escape.h"

#include <algorithm>
#include <iterator>

namespace swr {
namespace {

struct Range {
  char16_t first;
  char16_t last;
};

// Ascending.
constexpr Range escapedRanges[] = {
    {0x0000, 0x001F},  // control characters
    {0x007F, 0x009F},  // more control characters; U+0085 is a line end
    {0x061C, 0x061C},  // Arabic letter mark
    {0x180E, 0x180E},  // Mongolian vowel separator, which has no width
    {0x200B, 0x200B},  // zero-width space
    {0x200E, 0x200F},  // direction marks
    {0x2028, 0x202E},  // line and paragraph separator; direction embeddings and overrides
    {0x2060, 0x206F},  // invisible operators; direction isolates
    {0xFEFF, 0xFEFF},  // zero-width no-break space
    {0xFFF9, 0xFFFB},  // interlinear annotation
};

// Nearly every character.
bool IsPlain(char16_t unit) { return unit >= u' ' && unit < 0x7F; }

bool IsEscaped(char16_t unit) {
  if (IsPlain(unit)) return false;
  const auto* range = std::ranges::lower_bound(escapedRanges, unit, {}, &Range::last);
  return range != std::end(escapedRanges) && unit >= range->first;
}

}  // namespace

std::u16string EscapeForDisplay(std::u16string_view text) {
  // Looks at each character, because a loop without an exit is compiled to vector instructions.
  bool isPlain = true;
  for (const char16_t unit : text) isPlain &= IsPlain(unit);
  if (isPlain) return std::u16string(text);
  std::u16string escaped;
  escaped.reserve(text.size());
  for (const char16_t unit : text) {
    if (!IsEscaped(unit)) {
      escaped += unit;
      continue;
    }
    escaped += u"[U+";
    for (int shift = 12; shift >= 0; shift -= 4)
      escaped += u"0123456789ABCDEF"[unit >> shift & 0xF];
    escaped += u']';
  }
  return escaped;
}

}  // namespace swr
