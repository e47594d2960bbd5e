// Decoders for the three notations of digests: strict and loose hexadecimal, and base64. Each
// returns nothing if the text is not in its notation. No decoder checks the number of bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace swr {

// One or more pairs of hexadecimal digits of either case, and nothing else.
std::optional<std::vector<uint8_t>> DecodeHexStrict(std::u16string_view text);

enum class HyphenRule : uint8_t { Reject, Ignore };

// Hexadecimal as copied from a web page: trimmed first, with an optional "0x" in front, and with
// tabs, spaces, colons and, if allowed, hyphens anywhere between the digits.
std::optional<std::vector<uint8_t>> DecodeHexLoose(std::u16string_view text, HyphenRule hyphens);

// Base64 of RFC 4648, trimmed first, in the standard or URL-safe alphabet or a mix of both, with or
// without padding. Unused bits of the last digit are ignored.
std::optional<std::vector<uint8_t>> DecodeBase64(std::u16string_view text);

}  // namespace swr
