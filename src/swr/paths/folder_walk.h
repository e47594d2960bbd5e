// Lists the files below a folder, depth first: the files of a folder, then its subfolders one after
// the other, both in natural order ("2" before "10").
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace swr {

struct FoundFile {
  std::u16string path;       // the root as given, joined with the names below it
  size_t relativeStart = 0;  // where the part of the path begins that is relative to the root
  uint64_t size = 0;         // bytes, as reported by the listing

  // Relative to the root; a bare name for a file directly in it.
  std::u16string_view RelativePath() const {
    return std::u16string_view(path).substr(relativeStart);
  }
};

struct WalkOptions {
  bool recursive = true;
  bool includeHidden = false;  // report hidden and system files, and enter such folders
  bool withSizes = true;       // otherwise FoundFile::size may be 0, which saves a call per file
  const std::atomic<bool>* cancel = nullptr;  // may be null; checked at each entry
  // Enter links to folders too, except links to a folder that the walk is inside.
  bool followLinks = false;
  // Whether to report a file or enter a folder, by its path below the root; empty for all.
  std::function<bool(std::u16string_view relativePath, bool isDirectory)> wants;
  // Called for each folder that can't be listed, with a Windows error code; may be empty.
  std::function<void(const std::u16string& path, uint32_t error)> onError;
};

using FoundFileCallback = std::function<void(FoundFile)>;

// Calls `callback` for every file below `root`, on the calling thread. Links to folders are not
// entered unless the options say so; links to files are reported as files.
// Subfolders that can't be listed are skipped. Returns false only if `root` itself can't be listed;
// being cancelled is not a failure. A relative root starts from the current folder. `pattern`
// limits the files (not the folders) to names that match it (see SystemMatchesPattern); empty for
// all.
bool WalkFolder(const std::u16string& root, const WalkOptions& options,
                const FoundFileCallback& callback, const std::u16string& pattern = {});

}  // namespace swr
