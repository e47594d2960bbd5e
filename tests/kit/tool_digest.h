// Finds the digest in the output of another tool.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kit {

// The first word that consists of this many hexadecimal digits, in lower case; empty when there is
// none. Also accepts a line of digits with a blank after every second one, as certutil prints on
// Windows 7 and 8.
std::string DigestInOutput(std::string_view output, size_t digits);

}  // namespace kit
