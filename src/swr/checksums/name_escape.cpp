#include "swr/checksums/name_escape.h"

#include <algorithm>

namespace swr {

bool NameNeedsEscape(std::u16string_view name) {
  // Checks every character: without an early exit the loop is compiled to vector instructions.
  bool needsEscape = false;
  for (const char16_t unit : name) {
    needsEscape |= unit == u'\\' || unit == u'\n' || unit == u'\r';
  }
  return needsEscape;
}

std::u16string EscapeName(std::u16string_view name) {
  std::u16string escaped;
  for (const char16_t unit : name) {
    switch (unit) {
      case u'\\':
        escaped += u"\\\\";
        break;
      case u'\n':
        escaped += u"\\n";
        break;
      case u'\r':
        escaped += u"\\r";
        break;
      default:
        escaped += unit;
    }
  }
  return escaped;
}

}  // namespace swr
