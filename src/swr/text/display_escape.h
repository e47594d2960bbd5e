// Makes names and other untrusted texts safe to display.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// Replaces each character that would break a line, change the direction of text or be invisible
// with its code: "a[U+202E]txt.exe". These are the control characters, the line and paragraph
// separators, and the invisible formatting characters except the two joiners, which some scripts
// and emoji need. Everything else is kept, including spaces of any width.
//
// For display only: copy, save and open names unchanged.
std::u16string EscapeForDisplay(std::u16string_view text);

}  // namespace swr
