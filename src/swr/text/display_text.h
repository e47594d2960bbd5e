// Formats byte counts and error codes for display.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

// "1 byte", "1023 bytes", "1.0 KB", "10 KB", up to PB: factors of 1024, one decimal below 10,
// always with a full stop as the decimal point.
std::u16string FormatSize(uint64_t bytes);

// The system's message for a Windows error code without trailing full stops, spaces and line ends,
// or "Error " and the number if it has none.
std::u16string FormatErrorText(uint32_t error);

}  // namespace swr
