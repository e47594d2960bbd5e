// Text services of the platform: comparison, ordering, code pages and error messages. All functions
// may be called on any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swr {

// The upper-case form of the code unit according to the system's table, or the unit itself.
char16_t SystemUpperUnit(char16_t unit);
// Whether the texts are equal unit by unit after SystemUpperUnit; independent of the locale.
bool SystemEqualsNoCase(std::u16string_view a, std::u16string_view b);

// Natural order: runs of digits by value, ignoring case. Returns a negative number, 0 or a positive
// number. Different names may compare equal.
int SystemCompareNatural(const std::u16string& a, const std::u16string& b);
// The same for texts that end with a zero unit.
int SystemCompareNaturalTexts(const char16_t* a, const char16_t* b);
// Whether the keys of MakeNaturalKey compare as SystemCompareNatural does. To sort many texts,
// see natural_order.h.
extern const bool NaturalKeysAreExact;
// The same for a text that is compared many times: the key is made once, and keys are compared. A
// key is neither for display nor for storage.
std::u16string SystemNaturalKey(std::u16string text);
int SystemCompareNaturalKeys(const std::u16string& a, const std::u16string& b);

// Whether `name` matches one of the patterns, which are separated by ";" and may contain "*" and
// "?".
bool SystemMatchesPattern(const std::u16string& name, const std::u16string& patterns);

bool SystemIsValidUtf8(std::string_view bytes);
// Invalid sequences become U+FFFD.
std::u16string SystemDecodeUtf8(std::string_view bytes);
// Lone surrogates become U+FFFD.
std::string SystemEncodeUtf8(std::u16string_view text);
// From the ANSI code page of the system, or windows-1252 where there is none. Never fails.
std::u16string SystemDecodeAnsi(std::string_view bytes);

// The system's message for a Windows error code, including any line ends; empty if it has none.
std::u16string SystemErrorText(uint32_t error);

}  // namespace swr
