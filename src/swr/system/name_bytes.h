// File names as the bytes of a text file or a pipe, and back. Away from Windows names are bytes and
// both ways are without loss; on Windows they are UTF-16 and are written as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// The bytes that are written for a name.
std::string NameBytes(std::u16string_view name);

// One line of a text that holds names. On Windows bytes that are no UTF-8 are read in the ANSI code
// page.
std::u16string TextFromNameBytes(std::string_view bytes);

}  // namespace swr
