// Standard output and standard error: bytes to a file or a pipe, text to a terminal.
#pragma once

#include <cstdint>
#include <string_view>

namespace swr {

enum class StandardStream : uint8_t { Output, Error };

// Whether the stream is a terminal that a person looks at.
bool IsTerminal(StandardStream stream);
// Whether standard input is one.
bool IsInputTerminal();
// The width of the terminal in characters; 80 where it can't be asked.
uint32_t TerminalWidth(StandardStream stream);
// Whether the terminal understands the escape sequences of colours (ECMA-48). On Windows this
// switches them on.
bool EnableColors(StandardStream stream);

// Writes all of `text`, UTF-8, and returns 0, or a Windows error code: 109 when nobody reads the
// other end of a pipe. On a Windows console the text is written as UTF-16 characters.
[[nodiscard]] uint32_t WriteStandard(StandardStream stream, std::string_view text);

}  // namespace swr
