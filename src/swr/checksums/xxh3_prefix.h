// The prefix that tells an XXH3 digest from an XXH64 one of the same length on a line that names no
// algorithm.
#pragma once

#include <string_view>

#include "swr/text/text.h"

namespace swr {

inline constexpr std::u16string_view Xxh3Prefix = u"XXH3_";

// Takes the prefix off a token that has more than it, in any case of letters. False, and no change,
// without it.
inline bool TakeXxh3Prefix(std::u16string_view& token) {
  if (token.size() <= Xxh3Prefix.size() ||
      !EqualsNoCase(token.substr(0, Xxh3Prefix.size()), Xxh3Prefix)) {
    return false;
  }
  token.remove_prefix(Xxh3Prefix.size());
  return true;
}

}  // namespace swr
