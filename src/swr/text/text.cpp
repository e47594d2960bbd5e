#include "swr/text/text.h"

#include "swr/system/text_services.h"

namespace swr {

std::u16string_view TrimText(std::u16string_view text) {
  constexpr std::u16string_view blanks = u"\t\n\r \u00A0\u200B\uFEFF";
  const size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return text.substr(0, 0);
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool EqualsNoCase(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() && SystemEqualsNoCase(a, b);
}

bool EndsWithNoCase(std::u16string_view text, std::u16string_view suffix) {
  return text.size() >= suffix.size() &&
         SystemEqualsNoCase(text.substr(text.size() - suffix.size()), suffix);
}

std::u16string ToLowerText(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& unit : lower) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
  }
  return lower;
}

}  // namespace swr
