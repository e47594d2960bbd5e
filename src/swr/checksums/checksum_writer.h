// Writes digests as the text of a checksum file, in five formats.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "swr/hash/algorithms.h"
#include "swr/hash/digest.h"

namespace swr {

enum class ExportFormat : uint32_t {
  Sha256Sum = 0,  // "hash  name", one algorithm
  Tagged = 1,     // "ALGO (name) = hash", all digests
  Sfv = 2,        // "name HASH", CRC32 only
  Csv = 3,        // one row per file, one column per algorithm
  Json = 4,       // an array of objects
};

struct ExportOptions {
  ExportFormat format = ExportFormat::Sha256Sum;
  bool crLf = false;       // line ends are CR LF, otherwise LF
  bool uppercase = false;  // hexadecimal digits; those of SFV are always upper case
  AlgoId algo = {};        // for Sha256Sum, if hasAlgo is set
  bool hasAlgo = false;    // if not set, Sha256Sum writes the first digest of each row
  // Write names as the file system's own bytes (see system/name_bytes.h), and half of a surrogate
  // pair in JSON as an escape such as "\\udc80". Otherwise names are UTF-8 with replacement
  // characters.
  bool exactNames = false;
};

struct ExportDigest {
  AlgoId algo = {};
  Digest digest;
};

struct ExportRow {
  std::u16string name;                // the path as it is written to the file, before escaping
  uint64_t size = 0;                  // bytes
  std::vector<ExportDigest> digests;  // by ascending AlgoId
};

// The content of the whole file: UTF-8 without a byte-order mark, rows in the order given. Rows
// that lack the digest are left out, except in CSV and JSON. Empty if the format is not a
// valid value. Throws only std::bad_alloc.
std::string RenderChecksums(const std::vector<ExportRow>& rows, const ExportOptions& options);

// Writes the same text piece by piece, for lists too long to hold in memory: Head, the rows with
// Between before all but the first, and Tail. All functions may be called by several threads at
// once.
class ChecksumWriter {
 public:
  // `columns`: the algorithms of all rows, which only CSV needs in advance.
  ChecksumWriter(const ExportOptions& options, AlgoMask columns);

  std::string Head() const;
  // Empty for a row that is left out.
  std::string Row(const ExportRow& row) const;
  // Appends the same to `text`.
  void AppendRow(const ExportRow& row, std::string& text) const;
  std::string Between() const;
  std::string Tail(bool hasRows) const;

 private:
  ExportOptions options_;
  std::vector<AlgoId> columns_;
};

// The extension of a checksum file of this algorithm, with its full stop: ".sha256", ".b3".
// AlgoFromChecksumFileName recognises each of them.
std::u16string ExtensionForAlgo(AlgoId id);

}  // namespace swr
