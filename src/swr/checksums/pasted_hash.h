// What a person copied from a web page, read as a hash: bare hexadecimal or base64, a hash behind a
// label, a subresource-integrity value or one line of a checksum file.
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
  // The algorithms that the value may belong to, in the order of comparison; never empty.
  std::vector<AlgoId> candidates;
  // The text itself named the algorithm, which is the only candidate then.
  bool explicitAlgo = false;
  // The file name that came with the hash, or empty.
  std::u16string name;

  bool operator==(const ParsedHash&) const = default;
};

// The text of the Expected hash box. The first line with anything on it counts, the rest is
// ignored. Empty when it is no hash.
std::optional<ParsedHash> ParseExpectedHash(std::u16string_view text);

// A text from the clipboard that nobody has yet said to be a hash, so it must look more like one:
// a single line of at most 300 units, no hyphens between digits, no base64 without a label, and at
// least 16 bytes.
std::optional<ParsedHash> ParseClipboardHash(std::u16string_view text);

}  // namespace swr
