// File names of a POSIX system are bytes; the program's text is UTF-16. These two functions map
// between them without loss: whatever bytes a name holds, its text leads back to them.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// UTF-8 becomes its UTF-16. A byte that is not part of valid UTF-8 becomes the lone surrogate
// U+DC00 + byte. A lone surrogate in its three-byte form becomes itself, unless it lies in the
// range that such bytes use or might pair up with what follows it: then its bytes count as invalid.
std::u16string PathTextFromBytes(std::string_view bytes);

// The inverse of PathTextFromBytes.
std::string PathBytesFromText(std::u16string_view text);

}  // namespace swr
