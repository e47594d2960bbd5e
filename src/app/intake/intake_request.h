// What the window asks the intake to look up, and what it gets back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/rows/row.h"

namespace app {

// Files, and folders whose files are requested, in the order given.
struct PathsRequest {
  std::vector<std::u16string> paths;
  bool includeHidden = false;  // also hidden and system entries of the folders
};

// The files that a checksum file lists.
struct ChecksumFileRequest {
  std::u16string path;
  // Whether to announce the paths of all listed files before the first file is looked up.
  bool announcePaths = false;
};

using IntakeRequest = std::variant<PathsRequest, ChecksumFileRequest>;

// One file, as a row of the list.
struct IntakeFile {
  // Has no id. Failed if the system gave no information about the file; cancelled if it was not
  // queried because of a cancel. The path is full, or as given if it can't be made full. Has the
  // expected digest from the line of a ChecksumFileRequest.
  Row row;
  bool isWalked = false;  // found by walking a folder, not given by name
  // The path as the walk reported it, where it differs from that of the row; otherwise empty.
  std::u16string walkedPath;
  // False if no earlier file of the request has one of these paths, ignoring case.
  bool mayRepeat = true;
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
  // With ChecksumFileRequest::announcePaths: full paths of files that will follow. All of them
  // come before the first file.
  std::vector<std::u16string> announcedPaths;
  std::vector<IntakeFile> files;  // in order
  std::optional<IntakeEnd> end;
};

}  // namespace app
