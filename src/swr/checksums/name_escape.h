// How a name that can't stand on a line of a checksum file as it is gets there all the same. Such a
// line begins with a backslash of its own.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Whether a line end stands in the name, or the escape itself.
bool NameNeedsEscape(std::u16string_view name);

// Line feed, carriage return and backslash written as "\n", "\r" and "\\".
std::u16string EscapeName(std::u16string_view name);

}  // namespace swr
