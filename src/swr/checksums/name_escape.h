// Escaping of names in the lines of a checksum file. A line with an escaped name begins with a
// backslash.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Whether the name contains a line feed, a carriage return or a backslash.
bool NameNeedsEscape(std::u16string_view name);

// The name with line feed, carriage return and backslash written as "\n", "\r" and "\\".
// UnescapeName does not reverse "\r".
std::u16string EscapeName(std::u16string_view name);

}  // namespace swr
