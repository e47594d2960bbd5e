// The three forms of a line in a checksum file: tagged, plain and SFV.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace swr {

struct ChecksumLine {
  std::u16string name;  // unescaped; separators as in the line
  std::vector<uint8_t> digest;
  // The algorithms that the digest may belong to, in the order in which they are tried; never
  // empty.
  std::vector<AlgoId> candidates;
  uint32_t lineNumber = 0;  // from 1; set by ChecksumLineReader

  bool operator==(const ChecksumLine&) const = default;
};

// Each of these parses one form. The line has no line end and no leading blanks; trailing blanks
// are significant. On success they return true and set all of `result` but the line number; on
// failure they return false and leave `result` unchanged.

// "SHA256 (name) = hex", with a backslash in front when the name is escaped.
bool ParseTaggedLine(std::u16string_view line, ChecksumLine& result);
// "hex  name" or "hex *name", with a backslash in front when the name is escaped. `hint` is the
// algorithm that the file's name implies; it becomes the only candidate if the digest has its
// length, and is ignored otherwise. After "XXH3_" a digest of any length is accepted.
bool ParsePlainLine(std::u16string_view line, std::optional<AlgoId> hint, ChecksumLine& result);
// "name hex", where hex is a CRC32. The form has no escapes.
bool ParseSfvLine(std::u16string_view line, ChecksumLine& result);

// Replaces "\\" with a backslash and "\n" with a line feed; any other backslash is kept.
std::u16string UnescapeName(std::u16string_view text);

}  // namespace swr
