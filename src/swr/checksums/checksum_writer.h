// Finished digests as the text of a checksum file, in five formats.
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
  Csv = 3,        // a row a file, a column an algorithm
  Json = 4,       // an array of objects
};

struct ExportOptions {
  ExportFormat format = ExportFormat::Sha256Sum;
  bool crLf = false;       // line ends CR LF, else LF
  bool uppercase = false;  // hexadecimal digits; those of SFV always are
  AlgoId algo = {};        // the one of Sha256Sum
  bool hasAlgo = false;    // otherwise Sha256Sum takes the first digest of each row
};

struct ExportDigest {
  AlgoId algo = {};
  Digest digest;
};

struct ExportRow {
  std::u16string name;                // the path as it is to stand in the file
  uint64_t size = 0;                  // bytes
  std::vector<ExportDigest> digests;  // by ascending AlgoId
};

// The whole file: UTF-8 without a byte-order mark, rows in the order given. Rows without a fitting
// digest are left out, but for CSV and JSON. Empty for a format of another number.
std::string RenderChecksums(const std::vector<ExportRow>& rows, const ExportOptions& options);

// The ending of a checksum file of this algorithm, with its full stop: ".sha256", ".b3". Each is
// understood by AlgoFromChecksumFileName.
std::u16string ExtensionForAlgo(AlgoId id);

}  // namespace swr
