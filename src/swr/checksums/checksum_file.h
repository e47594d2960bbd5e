// Checksum files: recognising them by name, and parsing their text line by line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/checksums/checksum_line.h"
#include "swr/hash/algorithms.h"

namespace swr {

// The algorithm that the name of a checksum file implies (".sha256", "SHA256SUMS", "md5sum.txt"),
// or nothing. Only the last component of the path is considered, in upper or lower case; one suffix
// ".txt", ".asc" or ".sig" is ignored.
std::optional<AlgoId> AlgoFromChecksumFileName(std::u16string_view path);
// Whether a file of this name is likely to be a checksum file: it implies an algorithm, or it is
// one of the names without one ("checksums.txt", "*.digests").
bool IsChecksumFileName(std::u16string_view path);

struct ChecksumSet {
  std::vector<ChecksumLine> lines;  // in file order; a name can occur several times
  // The numbers, from 1 and ascending, of the lines that are neither a checksum nor ignored.
  std::vector<uint32_t> skippedLines;
};

// Which forms a line may have.
enum class ListForms : uint8_t {
  Usual,     // plain, tagged and SFV
  Extended,  // also those of more_list_forms.h
};

// What a line turned out to be.
enum class LineKind : uint8_t {
  Checksum,
  Nothing,  // blank, a comment, or the header or signature of a signed text
  Skipped,  // has none of the forms
};

// Parses a checksum file line by line. Plain, tagged and SFV lines may be mixed. Blank lines and
// comments are ignored, as are the header and the signature of a PGP clear-signed text; the
// signature is not verified, and lines outside the signed block are parsed too.
class ChecksumLineReader {
 public:
  // `path` is the path of the checksum file, whose name may imply an algorithm and a listed file.
  explicit ChecksumLineReader(std::u16string_view path, ListForms forms = ListForms::Usual);

  // The next line, without its line feed. `result` is filled for a checksum only.
  LineKind Read(std::u16string_view line, ChecksumLine& result);
  // The number of the line that was read last, from 1.
  uint32_t LineNumber() const { return number_; }
  // Whether any line so far belonged to a signed text.
  bool IsSigned() const { return isSigned_; }

 private:
  enum class Part : uint8_t { Body, SignedHeader, Signature };

  // Whether the line belongs to the header or signature of a clear-signed text. Tracks the part.
  bool IsFrame(std::u16string_view line);
  bool ParseLine(std::u16string_view line, ChecksumLine& result) const;

  std::optional<AlgoId> hint_;
  ListForms forms_;
  std::u16string namedFile_;  // the file to which a digest without a name belongs; empty for none
  uint32_t number_ = 0;
  Part part_ = Part::Body;
  bool isSigned_ = false;
};

// Parses the text of a checksum file one checksum at a time.
class ChecksumTextReader {
 public:
  // `text` must outlive the object; `path` need not. Its name may imply an algorithm.
  ChecksumTextReader(std::u16string_view text, std::u16string_view path)
      : rest_(text), lines_(path) {}

  // The next checksum, or nothing at the end of the text.
  std::optional<ChecksumLine> Next();
  // As in ChecksumSet, for the lines that Next has passed so far.
  const std::vector<uint32_t>& SkippedLines() const { return skippedLines_; }

 private:
  std::u16string_view rest_;
  ChecksumLineReader lines_;
  std::vector<uint32_t> skippedLines_;
};

// Parses the whole text at once.
ChecksumSet ParseChecksumText(std::u16string_view text, std::u16string_view path);

}  // namespace swr
