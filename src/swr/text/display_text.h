// The two formatters whose words the user sees: a byte count and a system error code.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

// "1 byte", "1023 bytes", "1.0 KB", "10 KB", up to PB: binary steps, one decimal below 10, always
// with a full stop as the decimal point.
std::u16string FormatSize(uint64_t bytes);

// The system's words for a Windows error code, without the full stop, spaces and line ends behind
// them; "Error " and the number when it has none.
std::u16string FormatErrorText(uint32_t error);

}  // namespace swr
