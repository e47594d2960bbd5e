// Standard output and standard error: bytes to a file or a pipe, text to a terminal.
#pragma once

#include <cstdint>
#include <string_view>

namespace swr {

enum class StandardStream : uint8_t { Output, Error };

// Whether the stream is a terminal.
bool IsTerminal(StandardStream stream);
// Whether standard input is a terminal.
bool IsInputTerminal();
// The width of the terminal in characters, or 80 if it is unknown.
uint32_t TerminalWidth(StandardStream stream);
// Whether the terminal supports the escape sequences for colours (ECMA-48). On Windows this enables
// them.
bool EnableColors(StandardStream stream);

// Writes all of `text`, which is UTF-8. Returns 0 or a Windows error code: 109 if the reading end
// of a pipe is closed. To a Windows console the text is written as UTF-16.
[[nodiscard]] uint32_t WriteStandard(StandardStream stream, std::string_view text);

}  // namespace swr
