#include "app/flows/type_ahead.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "swr/system/text_services.h"
#include "swr/text/display_escape.h"

namespace app {
namespace {

// A text that names are compared with, ignoring case. Names are read only as far as necessary,
// because a list can have a million and most differ in the first letter.
class TypedText {
 public:
  TypedText(std::u16string_view typed, bool whole)
      : upper_(typed), whole_(whole), mayBeEscape_(typed.find(u'[') != typed.npos) {
    for (char16_t& unit : upper_) unit = swr::SystemUpperUnit(unit);
  }

  bool Matches(std::u16string_view name) const {
    // Characters that can't be displayed appear as a code in brackets; other names are displayed
    // unchanged.
    return mayBeEscape_
               ? MatchesText(swr::EscapeForDisplay(whole_ ? name : name.substr(0, upper_.size())))
               : MatchesText(name);
  }

 private:
  bool MatchesText(std::u16string_view text) const {
    if (text.size() < upper_.size() || (whole_ && text.size() > upper_.size())) return false;
    for (size_t i = 0; i < upper_.size(); ++i) {
      if (text[i] != upper_[i] && swr::SystemUpperUnit(text[i]) != upper_[i]) return false;
    }
    return true;
  }

  std::u16string upper_;
  bool whole_;
  bool mayBeEscape_;
};

// The first matching row in [begin, end).
std::optional<size_t> FirstMatch(const RowTable& rows, size_t begin, size_t end,
                                 const TypedText& text) {
  // After a sort the next row can be anywhere in memory, so the next rows, and then their names,
  // are prefetched.
  constexpr size_t ahead = 8;
  for (size_t i = begin; i < end; ++i) {
    if (i + 2 * ahead < end) __builtin_prefetch(&rows[i + 2 * ahead].Name());
    if (i + ahead < end) __builtin_prefetch(rows[i + ahead].Name().data());
    if (text.Matches(rows[i].Name())) return i;
  }
  return std::nullopt;
}

}  // namespace

std::optional<size_t> FindRowNamed(const RowTable& rows, std::u16string_view typed, size_t first,
                                   bool whole) {
  if (typed.empty()) return std::nullopt;
  const TypedText text(typed, whole);
  const size_t begin = std::min(first, rows.Size());
  const auto found = FirstMatch(rows, begin, rows.Size(), text);
  return found ? found : FirstMatch(rows, 0, begin, text);
}

}  // namespace app
