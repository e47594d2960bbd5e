#include "cli/select/name_pattern.h"

#include <optional>

#include "swr/text/text.h"

namespace cli {
namespace {

class Matcher {
 public:
  Matcher(std::u16string_view text, std::u16string_view pattern, swr::PathStyle style)
      : text_(text), pattern_(pattern), style_(style) {}

  // Matching with one backtracking point for "*" and one for "**". An earlier star of the same kind
  // never needs to be reconsidered, so for each kind the time is bounded by the product of the
  // lengths.
  bool Matches() {
    size_t t = 0;
    size_t p = 0;
    Retry star;
    Retry doubleStar;
    while (true) {
      if (p < pattern_.size() && pattern_[p] == u'*') {
        const bool isDouble = p + 1 < pattern_.size() && pattern_[p + 1] == u'*';
        while (p < pattern_.size() && pattern_[p] == u'*') ++p;
        if (isDouble) {
          // "a/**/b" matches "a/b" too.
          const bool isWholeComponent = p < pattern_.size() && IsSeparator(pattern_[p]) &&
                                        (t == 0 || IsSeparator(text_[t - 1]));
          doubleStar = {.pattern = p, .text = t, .isWholeComponent = isWholeComponent};
          star = {};
          if (isWholeComponent) ++p;
        } else {
          star = {.pattern = p, .text = t};
        }
        continue;
      }
      if (t == text_.size() && p == pattern_.size()) return true;
      if (t < text_.size() && p < pattern_.size() && MatchUnit(text_[t], p)) {
        ++t;
        continue;
      }
      if (star.pattern && star.text < text_.size() && !IsSeparator(text_[star.text])) {
        t = ++star.text;
        p = *star.pattern;
        continue;
      }
      if (doubleStar.pattern && doubleStar.text < text_.size()) {
        t = ++doubleStar.text;
        p = *doubleStar.pattern;
        star = {};
        if (!doubleStar.isWholeComponent) continue;
        // After "**/" a match can only begin at the start of a path component.
        if (t > 0 && !IsSeparator(text_[t - 1])) {
          while (t < text_.size() && !IsSeparator(text_[t])) ++t;
          if (t == text_.size()) return false;
          ++t;
          doubleStar.text = t;
        }
        ++p;
        continue;
      }
      return false;
    }
  }

 private:
  struct Retry {
    std::optional<size_t> pattern;
    size_t text = 0;
    bool isWholeComponent = false;
  };

  bool IsSeparator(char16_t unit) const {
    return unit == u'/' || (unit == u'\\' && style_ == swr::PathStyle::Windows);
  }

  bool AreEqual(char16_t a, char16_t b) const {
    if (a == b || (IsSeparator(a) && IsSeparator(b))) return true;
    return style_ == swr::PathStyle::Windows &&
           swr::EqualsNoCase(std::u16string_view(&a, 1), std::u16string_view(&b, 1));
  }

  // Matches one character of the pattern at `p`, and on success moves `p` past it.
  bool MatchUnit(char16_t unit, size_t& p) const {
    const char16_t wanted = pattern_[p];
    if (wanted == u'?' && !IsSeparator(unit)) {
      ++p;
      return true;
    }
    if (wanted == u'[') {
      size_t afterSet = p;
      if (const std::optional<bool> isIn = IsInSet(unit, afterSet)) {
        if (!*isIn || IsSeparator(unit)) return false;
        p = afterSet;
        return true;
      }
    }
    if (wanted == u'\\' && style_ == swr::PathStyle::Posix && p + 1 < pattern_.size()) {
      if (unit != pattern_[p + 1]) return false;
      p += 2;
      return true;
    }
    if (!AreEqual(unit, wanted)) return false;
    ++p;
    return true;
  }

  // Nothing for a bracket that is never closed, which matches itself.
  std::optional<bool> IsInSet(char16_t unit, size_t& p) const {
    size_t i = p + 1;
    const bool isNegated = i < pattern_.size() && (pattern_[i] == u'!' || pattern_[i] == u'^');
    if (isNegated) ++i;
    bool found = false;
    // A closing bracket in the first position is a member of the set.
    for (bool isFirst = true; i < pattern_.size() && (isFirst || pattern_[i] != u']');
         isFirst = false) {
      const char16_t low = pattern_[i];
      const bool isRange =
          i + 2 < pattern_.size() && pattern_[i + 1] == u'-' && pattern_[i + 2] != u']';
      const char16_t high = isRange ? pattern_[i + 2] : low;
      found = found || AreEqual(unit, low) || (unit >= low && unit <= high);
      i += isRange ? 3 : 1;
    }
    if (i >= pattern_.size()) return std::nullopt;
    p = i + 1;
    return found != isNegated;
  }

  std::u16string_view text_;
  std::u16string_view pattern_;
  swr::PathStyle style_;
};

}  // namespace

bool FitsPattern(std::u16string_view relativePath, std::u16string_view pattern,
                 swr::PathStyle style) {
  const std::u16string_view separators = style == swr::PathStyle::Windows ? u"/\\" : u"/";
  while (pattern.size() > 1 && separators.find(pattern.back()) != separators.npos) {
    pattern.remove_suffix(1);
  }
  if (pattern.find_first_of(separators) == pattern.npos) {
    const size_t last = relativePath.find_last_of(separators);
    if (last != relativePath.npos) relativePath.remove_prefix(last + 1);
  } else if (separators.find(pattern.front()) != separators.npos) {
    pattern.remove_prefix(1);
  }
  return Matcher(relativePath, pattern, style).Matches();
}

}  // namespace cli
