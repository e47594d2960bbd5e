// Listing one folder.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
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

// Identifies a folder while it exists, independently of the path used.
struct FolderIdentity {
  uint64_t volume = 0;
  uint64_t number = 0;

  bool operator==(const FolderIdentity&) const = default;
};

// The identity of the folder at the path; links are followed. Nothing if the system does not report
// it.
std::optional<FolderIdentity> IdentityOfFolder(const std::u16string& folder);

// Appends the entries of `folder` (a path as returned by ToLongPath) in no particular order,
// without "." and "..", and returns 0. On failure returns a Windows error code and appends nothing.
// An error in the middle of a listing ends it as if it were complete, and so does `cancel` (which
// may be null) once it is set. Without `withSizes` the sizes may be 0.
[[nodiscard]] uint32_t ReadDirectory(const std::u16string& folder,
                                     std::vector<DirectoryEntry>& entries, bool withSizes = true,
                                     const std::atomic<bool>* cancel = nullptr);

}  // namespace swr
