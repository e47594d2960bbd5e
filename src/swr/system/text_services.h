// What the platform knows about text: comparing, ordering, code pages and the words for an error.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

// The unit's capital by the system's own table; the unit itself when it has none.
char16_t SystemUpperUnit(char16_t unit);
// Equality by code unit after each unit went through that table; no locale.
bool SystemEqualsNoCase(std::u16string_view a, std::u16string_view b);

// The order in which a person expects names: runs of digits by value, letters without case.
// Negative, 0 or positive. Names that differ may still compare equal.
int SystemCompareNatural(const std::u16string& a, const std::u16string& b);
// The same for a text that is compared many times: what is made of it once, and the comparison of
// two such keys. A key is nothing to be shown or kept.
std::u16string SystemNaturalKey(std::u16string text);
int SystemCompareNaturalKeys(const std::u16string& a, const std::u16string& b);

// Whether `name` fits one of the patterns, which are separated by ";" and may hold "*" and "?".
bool SystemMatchesPattern(const std::u16string& name, const std::u16string& patterns);

bool SystemIsValidUtf8(std::string_view bytes);
// Invalid sequences become U+FFFD.
std::u16string SystemDecodeUtf8(std::string_view bytes);
// Lone surrogates become U+FFFD.
std::string SystemEncodeUtf8(std::u16string_view text);
// The ANSI code page of the system; windows-1252 where there is none. Never fails.
std::u16string SystemDecodeAnsi(std::string_view bytes);

// The system's words for a Windows error code as it gives them, line ends included; empty when it
// has none.
std::u16string SystemErrorText(uint32_t error);

}  // namespace swr
