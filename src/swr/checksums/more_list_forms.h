// Forms of checksum lines that other tools write and the window does not read. They are tried after
// the usual forms, and only on request (see ListForms).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "swr/checksums/checksum_line.h"
#include "swr/hash/algorithms.h"

namespace swr {

// The file that a checksum file is named after.
struct NamedByList {
  std::optional<AlgoId> algo;
  std::u16string name;  // empty for none
};

// The algorithm and the file implied by a name like "disk.iso.sha256", "disk.iso.sha256sum" or
// "disk.iso.sha256.txt": SHA-256 and "disk.iso". Nothing for other names.
std::optional<NamedByList> FileNamedByList(std::u16string_view listPath);

// Parses a line without its line end and leading blanks. True if it has one of these forms;
// otherwise `result` is unchanged:
//   SHA2-256(name)= hex       as openssl writes it
//   hex<tab>name
//   SHA256 (name) = base64    with the length of the algorithm's digest
//   hex                       alone, for the file that the list is named after
bool ParseExtendedLine(std::u16string_view line, const NamedByList& named, ChecksumLine& result);

}  // namespace swr
