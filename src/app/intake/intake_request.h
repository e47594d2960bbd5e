// What the window asks the intake to look up, and what it gets back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "swr/hash/algorithms.h"
#include "swr/system/file.h"

namespace app {

// Files, and folders whose files are wanted, in the order given.
struct PathsRequest {
  std::vector<std::u16string> paths;
  bool includeHidden = false;  // also hidden and system entries of the folders
};

// The files that a checksum file lists.
struct ChecksumFileRequest {
  std::u16string path;
  // Whether the paths of all listed files are wanted before the first file is looked up.
  bool announcePaths = false;
};

using IntakeRequest = std::variant<PathsRequest, ChecksumFileRequest>;

// What a line of a checksum file says about its file.
struct ListedChecksum {
  std::vector<uint8_t> digest;
  std::vector<swr::AlgoId> candidates;  // that the digest may belong to, in the order of comparison
  uint32_t lineNumber = 0;              // from 1
};

// One file, with everything that a new row needs to know about it.
struct IntakeFile {
  std::u16string path;    // full; as it was given if it can't be made full
  bool isWalked = false;  // found by the walk of a folder, not named itself
  // The path as the walk reported it, where it differs from `path`; otherwise empty.
  std::u16string walkedPath;
  // False if no earlier file of the request has one of these paths, ignoring case.
  bool mayRepeat = true;
  uint64_t size = 0;  // bytes
  swr::FileTime modified = 0;
  uint32_t error = 0;    // Windows error code; meaningful if `failed`
  bool failed = false;   // the system gave no information about the file
  bool lookedUp = true;  // false after a cancel: the system was not asked about the file
  std::optional<ListedChecksum> listed;  // always set for a ChecksumFileRequest
};

// How a request ended.
struct IntakeEnd {
  bool cancelled = false;
  // Of a ChecksumFileRequest whose file can't be read: the Windows error code.
  std::optional<uint32_t> readError;
  // Of a ChecksumFileRequest: the numbers of the lines that are neither a checksum nor ignored,
  // ascending.
  std::vector<uint32_t> skippedLines;
};

// Part of the answer to a request. The batches of one request follow one another; the last of them
// has the end. Then come those of the next request.
struct IntakeBatch {
  uint64_t requestId = 0;
  // With ChecksumFileRequest::announcePaths: full paths of files that are still to come. All of
  // them come before the first file.
  std::vector<std::u16string> announcedPaths;
  std::vector<IntakeFile> files;  // in order
  std::optional<IntakeEnd> end;
};

}  // namespace app
