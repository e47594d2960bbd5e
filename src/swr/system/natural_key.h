// Keys for sorting texts in natural order: runs of digits by value, letters without case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace swr {

// The key of the text. Keys are compared byte by byte, as unsigned numbers, a shorter one before a
// longer one that begins with it. They have no zero bytes, and are neither for display nor for
// storage. This is the order of SystemCompareNatural on POSIX systems; that of Windows depends on
// the user's language, and keys approximate it well for ordinary names.
//
// The key lies in `buffer`, which grows if necessary. A long key may end early, once it has at
// least `enough` bytes.
std::string_view MakeNaturalKey(std::u16string_view text, std::string& buffer,
                                size_t enough = std::string::npos);

}  // namespace swr
