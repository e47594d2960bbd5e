#include "swr/checksums/name_escape.h"

namespace swr {

bool NameNeedsEscape(std::u16string_view name) {
  return name.find_first_of(u"\\\n\r") != name.npos;
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
