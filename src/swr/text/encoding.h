// Conversion between bytes and text.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Invalid sequences become replacement characters.
std::u16string Utf8ToWide(std::string_view bytes);
// Without a byte-order mark; lone surrogates become replacement characters.
std::string WideToUtf8(std::u16string_view text);
// Appends the same to `bytes`.
void AppendUtf8(std::u16string_view text, std::string& bytes);

// Decodes the content of a text file. A byte-order mark selects UTF-8 or UTF-16 in either byte
// order and is removed. Without one, the bytes are UTF-8 if they are valid as such, and otherwise
// in the system's ANSI code page. Never fails; an odd last byte of UTF-16 is dropped.
std::u16string DecodeTextBytes(std::string_view bytes);

}  // namespace swr
