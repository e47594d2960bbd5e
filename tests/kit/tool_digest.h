// The digest in what another tool prints.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kit {

// The first word of so many hexadecimal digits, in lower case; empty when there is none. certutil
// of Windows 7 and 8 puts a blank after every second digit, which counts as one word if nothing
// else is on its line.
std::string DigestInOutput(std::string_view output, size_t digits);

}  // namespace kit
