// Trimming and case-insensitive comparison, shared by all parsers and flows. Lengths and positions
// are in UTF-16 code units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

// A view into `text` without blanks at either end. Blanks are tab, line feed, carriage return,
// space, and the characters that are easily copied with a hash from a web page: no-break space,
// zero-width space and the byte-order mark. No other space is a blank.
std::u16string_view TrimText(std::u16string_view text);

// Whether the texts are equal by code unit, ignoring case according to the system's table,
// independently of the locale.
bool EqualsNoCase(std::u16string_view a, std::u16string_view b);
// A hash value that is the same for texts that are equal by EqualsNoCase.
uint64_t CaseHash(std::u16string_view text);
// Continues a hash: the value for a text that is `text` appended to one whose value is `start`.
uint64_t CaseHash(std::u16string_view text, uint64_t start);
bool EndsWithNoCase(std::u16string_view text, std::u16string_view suffix);

// Converts A to Z to lower case. Other letters keep their case, so that paths which differ only in
// the case of such a letter stay different.
std::u16string ToLowerText(std::u16string_view text);

}  // namespace swr
