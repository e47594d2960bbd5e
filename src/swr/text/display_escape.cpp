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
constexpr Range unshown[] = {
    {0x0000, 0x001F},  // control characters
    {0x007F, 0x009F},  // the same; U+0085 is a line end
    {0x061C, 0x061C},  // Arabic letter mark
    {0x180E, 0x180E},  // a separator that no longer takes room
    {0x200B, 0x200B},  // zero-width space
    {0x200E, 0x200F},  // marks of direction
    {0x2028, 0x202E},  // line and paragraph separator; embedding and override of direction
    {0x2060, 0x206F},  // invisible operators; isolates of direction
    {0xFEFF, 0xFEFF},  // zero-width no-break space
    {0xFFF9, 0xFFFB},  // marks of annotation
};

bool IsUnshown(char16_t unit) {
  if (unit >= u' ' && unit < 0x7F) return false;  // nearly all there is
  const auto* range = std::ranges::lower_bound(unshown, unit, {}, &Range::last);
  return range != std::end(unshown) && unit >= range->first;
}

}  // namespace

std::u16string EscapeForDisplay(std::u16string_view name) {
  std::u16string shown;
  shown.reserve(name.size());
  for (const char16_t unit : name) {
    if (!IsUnshown(unit)) {
      shown += unit;
      continue;
    }
    shown += u"[U+";
    for (int shift = 12; shift >= 0; shift -= 4) shown += u"0123456789ABCDEF"[unit >> shift & 0xF];
    shown += u']';
  }
  return shown;
}

}  // namespace swr
