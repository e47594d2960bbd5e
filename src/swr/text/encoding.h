// From bytes to text and back.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Invalid sequences become replacement characters.
std::u16string Utf8ToWide(std::string_view bytes);
// Without a byte-order mark; lone surrogates become replacement characters.
std::string WideToUtf8(std::u16string_view text);

// The text of a file's bytes. A mark at the start decides for UTF-8 or UTF-16, in either byte
// order, and is dropped; without one, valid UTF-8 is taken as that and anything else as the
// system's ANSI code page. Never fails; a last odd byte of UTF-16 is dropped.
std::u16string DecodeTextBytes(std::string_view bytes);

}  // namespace swr
