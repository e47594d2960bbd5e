// The prefix that distinguishes an XXH3-64 digest from an XXH64 one, which has the same length, in
// a line that names no algorithm.
#pragma once

#include <string_view>

#include "swr/text/text.h"

namespace swr {

inline constexpr std::u16string_view Xxh3Prefix = u"XXH3_";

// Removes the prefix, in upper or lower case, from a token that is longer than it. Returns false
// and leaves the token unchanged if it has none.
inline bool TakeXxh3Prefix(std::u16string_view& token) {
  if (token.size() <= Xxh3Prefix.size() ||
      !EqualsNoCase(token.substr(0, Xxh3Prefix.size()), Xxh3Prefix)) {
    return false;
  }
  token.remove_prefix(Xxh3Prefix.size());
  return true;
}

}  // namespace swr
