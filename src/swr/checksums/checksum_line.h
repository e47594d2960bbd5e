// One line of a checksum file in each of the three forms that such files have.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace swr {

struct ChecksumLine {
  std::u16string name;  // as the line gives it, unescaped, separators untouched
  std::vector<uint8_t> digest;
  // The algorithms that the digest may belong to, in the order of comparison; never empty.
  std::vector<AlgoId> candidates;
  uint32_t lineNumber = 0;  // from 1; set by ParseChecksumText

  bool operator==(const ChecksumLine&) const = default;
};

// The forms take a line without its line end and leading blanks; trailing blanks are theirs. Each
// fills `result` and gives true, or gives false and leaves `result` as it was.

// "SHA256 (name) = hex", with a backslash in front when the name is escaped.
bool ParseTaggedLine(std::u16string_view line, ChecksumLine& result);
// "hex  name" or "hex *name", with a backslash in front when the name is escaped. `hint` is the
// algorithm that the file's name implies; it counts where the digest has its length.
bool ParsePlainLine(std::u16string_view line, std::optional<AlgoId> hint, ChecksumLine& result);
// "name hex" with a CRC32.
bool ParseSfvLine(std::u16string_view line, ChecksumLine& result);

// "\\" becomes a backslash and "\n" a line feed; any other backslash stands for itself.
std::u16string UnescapeName(std::u16string_view text);

}  // namespace swr
