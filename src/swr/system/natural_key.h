// Keys for sorting texts in natural order: runs of digits by value, letters without case.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Appends the key of the text. Keys are compared unit by unit, a shorter one before a longer one
// that begins with it. A key is neither for display nor for storage. This is the order of
// SystemCompareNatural on POSIX systems; that of Windows depends on the user's language, and a key
// is a good guess at it for plain names.
void AppendNaturalKey(std::u16string_view text, std::u16string& key);

}  // namespace swr
