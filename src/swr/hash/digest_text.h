// Digests as hexadecimal text, and comparison with bytes.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "swr/hash/digest.h"

namespace swr {

// Two digits per byte, in stored order, without prefix or separators; empty for an empty digest.
std::string BytesToHex(std::span<const uint8_t> bytes, bool uppercase);
std::string DigestToHex(const Digest& digest, bool uppercase);
std::u16string DigestToWideHex(const Digest& digest, bool uppercase);

// Appends the same to an existing text.
void AppendHex(std::span<const uint8_t> bytes, bool uppercase, std::string& text);
void AppendHex(std::span<const uint8_t> bytes, bool uppercase, std::u16string& text);

// Whether length and bytes are equal. Not a constant-time comparison.
bool DigestEquals(const Digest& digest, std::span<const uint8_t> bytes);

}  // namespace swr
