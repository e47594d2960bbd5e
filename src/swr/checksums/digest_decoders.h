// Digests from text: the three spellings in which people and tools write the bytes of a digest.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace swr {

// Pairs of hexadecimal digits of either case and nothing else; at least one pair.
std::optional<std::vector<uint8_t>> DecodeHexStrict(std::u16string_view text);

enum class HyphenRule : uint8_t { Refuse, PassOver };

// Hexadecimal as it is copied from somewhere: trimmed, with or without "0x" in front, with tabs,
// spaces, colons and, if allowed, hyphens between the digits.
std::optional<std::vector<uint8_t>> DecodeHexLoose(std::u16string_view text, HyphenRule hyphens);

// Base64 of RFC 4648, trimmed, in its standard or its URL-safe alphabet or a mix of both, with or
// without padding. The unused bits of the last digit are not looked at.
std::optional<std::vector<uint8_t>> DecodeBase64(std::u16string_view text);

}  // namespace swr
