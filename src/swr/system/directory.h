// Listing one folder.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace swr {

struct DirectoryEntry {
  std::u16string name;
  uint64_t size = 0;  // bytes; for a link to a file, of its target
  bool isDirectory = false;
  bool isHidden = false;  // hidden or system; on POSIX, a name that begins with a full stop
  bool isLink = false;    // a reparse point: junction, symbolic link, mount point
};

// Appends the entries of `folder` (in the form that the system takes) in no particular order,
// without
// "." and "..", and returns 0. On failure returns a Windows error code and appends nothing. An
// error in the middle of a listing ends it as if it were complete. Without `withSizes` the sizes
// may be 0.
[[nodiscard]] uint32_t ReadDirectory(const std::u16string& folder,
                                     std::vector<DirectoryEntry>& entries, bool withSizes = true);

}  // namespace swr
