// Parses a hash that a person copied from a web page: hexadecimal or base64, bare or with a label,
// a subresource-integrity value, or a line of a checksum file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace swr {

struct ParsedHash {
  std::vector<uint8_t> digest;
  // The algorithms that the value may belong to, in the order in which they are tried; never empty.
  std::vector<AlgoId> candidates;
  // Whether the text named the algorithm, which is then the only candidate.
  bool explicitAlgo = false;
  // The file name that came with the hash, or empty.
  std::u16string name;

  bool operator==(const ParsedHash&) const = default;
};

// Parses the text of the Expected hash box: its first line that is not blank, of at most 4096 code
// units. Nothing if that is not a hash.
std::optional<ParsedHash> ParseExpectedHash(std::u16string_view text);

// Parses text from the clipboard. It may be anything, so the rules are stricter: a single line of
// at most 300 code units, no hyphens between digits, no base64 without a label, and at least 16
// bytes.
std::optional<ParsedHash> ParseClipboardHash(std::u16string_view text);

}  // namespace swr
