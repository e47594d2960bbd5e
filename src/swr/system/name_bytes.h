// Converts file names to the bytes of a text file or a pipe, and back. On POSIX systems names are
// bytes, and both directions are lossless; on Windows they are UTF-16 and are written as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// The bytes to write for a name.
std::string NameBytes(std::u16string_view name);

// Decodes one line of a text that contains names. On Windows bytes that are not valid UTF-8 are
// decoded with the ANSI code page.
std::u16string TextFromNameBytes(std::string_view bytes);

}  // namespace swr
