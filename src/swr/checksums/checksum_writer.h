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
  AlgoId algo = {};        // of Sha256Sum, if hasAlgo is set
  bool hasAlgo = false;    // otherwise Sha256Sum writes the first digest of each row
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
// that lack the digest are left out, except in CSV and JSON. Empty if the format has no valid
// number. Throws only std::bad_alloc.
std::string RenderChecksums(const std::vector<ExportRow>& rows, const ExportOptions& options);

// The extension of a checksum file of this algorithm, with its full stop: ".sha256", ".b3".
// AlgoFromChecksumFileName recognises each of them.
std::u16string ExtensionForAlgo(AlgoId id);

}  // namespace swr
