// Names and other texts from outside, as they are shown.
#pragma once

#include <string>
#include <string_view>

namespace swr {

// The text with each character that would break a line, turn round the letters behind it or not
// show at all written as its number: "a[U+202E]txt.exe". These are control characters, line and
// paragraph separators, and the invisible characters that direct writing, but for the two joiners
// that scripts and pictographs are written with. All else stays, blanks of any width included.
//
// For the screen alone: what is copied, saved or opened has the name as it is.
std::u16string EscapeForDisplay(std::u16string_view name);

}  // namespace swr
