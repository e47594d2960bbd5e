// Checksum files: how their names are recognised, and what their text says line by line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "swr/checksums/checksum_line.h"
#include "swr/hash/algorithms.h"

namespace swr {

// The algorithm that the name of a checksum file implies (".sha256", "SHA256SUMS", "md5sum.txt").
std::optional<AlgoId> AlgoFromChecksumFileName(std::u16string_view path);
// Whether a file of this name is worth reading as a checksum file.
bool IsChecksumFileName(std::u16string_view path);

struct ChecksumSet {
  std::vector<ChecksumLine> lines;  // in file order; a name can come several times
  // The numbers, from 1 and ascending, of the lines that hold something that is no checksum.
  std::vector<uint32_t> skippedLines;
};

// Reads a whole file. Plain, tagged and SFV lines may be mixed; blank lines and comments are passed
// over, and so are the frame and signature of a PGP clear-signed text, which is not checked. `path`
// is the file's own, for what its name implies.
ChecksumSet ParseChecksumText(std::u16string_view text, std::u16string_view path);

}  // namespace swr
