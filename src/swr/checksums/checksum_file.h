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

// Reads the text of a file checksum by checksum. Plain, tagged and SFV lines may be mixed; blank
// lines and comments are passed over, and so are the frame and signature of a PGP clear-signed
// text, which is not checked.
class ChecksumTextReader {
 public:
  // `text` must outlive the object. `path` is the file's own, for what its name implies.
  ChecksumTextReader(std::u16string_view text, std::u16string_view path)
      : rest_(text), hint_(AlgoFromChecksumFileName(path)) {}

  // Nothing at the end of the text.
  std::optional<ChecksumLine> Next();
  // As ChecksumSet has them, of the lines that Next came by.
  const std::vector<uint32_t>& SkippedLines() const { return skippedLines_; }

 private:
  enum class Part : uint8_t { Body, SignedHeader, Signature };

  // True for a line of the frame or signature of a clear-signed text.
  bool IsFrame(std::u16string_view line);

  std::u16string_view rest_;
  std::optional<AlgoId> hint_;
  uint32_t number_ = 0;  // of the last line that was read
  Part part_ = Part::Body;
  std::vector<uint32_t> skippedLines_;
};

// The whole of it at once.
ChecksumSet ParseChecksumText(std::u16string_view text, std::u16string_view path);

}  // namespace swr
