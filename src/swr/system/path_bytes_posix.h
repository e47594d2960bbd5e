// File names are bytes on POSIX systems, and UTF-16 in the program. These functions convert without
// loss: the text of any bytes converts back to the same bytes.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Converts UTF-8. A byte that is not part of valid UTF-8 becomes the lone surrogate U+DC00 + byte.
// A lone surrogate encoded in three bytes becomes that surrogate, unless it lies in the range used
// for such bytes or might form a pair with what follows: then its bytes are treated as invalid.
std::u16string PathTextFromBytes(std::string_view bytes);

// The inverse of PathTextFromBytes.
std::string PathBytesFromText(std::u16string_view text);

}  // namespace swr
