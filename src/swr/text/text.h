// Blanks and case: the small helpers that every parser and flow shares. Lengths and positions count
// UTF-16 code units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

// `text` without the blanks at both ends. Blanks are tab, line feed, carriage return and space, and
// what comes along when a hash is copied from a web page: no-break space, zero-width space and the
// byte-order mark. No other space counts.
std::u16string_view TrimText(std::u16string_view text);

// Equal by code unit, ignoring case as the system does, without regard to the locale.
bool EqualsNoCase(std::u16string_view a, std::u16string_view b);
// For look-ups: the same for all texts that are EqualsNoCase, and hardly ever for others.
uint64_t CaseHash(std::u16string_view text);
bool EndsWithNoCase(std::u16string_view text, std::u16string_view suffix);

// A to Z in lower case; every other letter keeps its case, so that paths which differ only in the
// case of such a letter stay different.
std::u16string ToLowerText(std::u16string_view text);

}  // namespace swr
