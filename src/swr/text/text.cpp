#include "swr/text/text.h"

#include <algorithm>

#include "swr/system/text_services.h"

namespace swr {
namespace {

constexpr char16_t ToLowerUnit(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

// The case folding of EqualsNoCase.
char16_t ToUpperUnit(char16_t unit) {
  if (unit >= 128) return SystemUpperUnit(unit);
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

}  // namespace

std::u16string_view TrimText(std::u16string_view text) {
  constexpr std::u16string_view blanks = u"\t\n\r \u00A0\u200B\uFEFF";
  const size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return text.substr(0, 0);
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool EqualsNoCase(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin());
  if (inA == a.end()) return true;
  // Most texts differ in an ASCII character, which equals nothing but its other case. Only other
  // differences need a system call.
  if (*inA < 128 && *inB < 128 && ToLowerUnit(*inA) != ToLowerUnit(*inB)) return false;
  const auto same = static_cast<size_t>(inA - a.begin());
  return SystemEqualsNoCase(a.substr(same), b.substr(same));
}

// FNV-1a, over code units.
uint64_t CaseHash(std::u16string_view text) { return CaseHash(text, 0xCBF29CE484222325); }

uint64_t CaseHash(std::u16string_view text, uint64_t start) {
  uint64_t hash = start;
  for (const char16_t unit : text) hash = (hash ^ ToUpperUnit(unit)) * 0x100000001B3;
  return hash;
}

bool EndsWithNoCase(std::u16string_view text, std::u16string_view suffix) {
  return text.size() >= suffix.size() &&
         SystemEqualsNoCase(text.substr(text.size() - suffix.size()), suffix);
}

std::u16string ToLowerText(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& unit : lower) unit = ToLowerUnit(unit);
  return lower;
}

}  // namespace swr
