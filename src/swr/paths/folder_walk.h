// Lists the files under a folder, depth first, in the order in which a person expects to read them:
// a folder's files first, then its subfolders one after the other, each kind in natural order.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace swr {

struct FoundFile {
  std::u16string path;          // the walked folder as it was given, joined with the names below it
  std::u16string relativePath;  // from the walked folder; the bare name for a file directly in it
  uint64_t size = 0;            // bytes, as the listing gives them
};

struct WalkOptions {
  bool recursive = true;
  bool includeHidden = false;  // report hidden and system entries, and go into such folders
  bool withSizes = true;       // else FoundFile::size may be 0, which saves a call for each file
  const std::atomic<bool>* cancel = nullptr;  // may be null; looked at before each entry
};

using FoundFileCallback = std::function<void(FoundFile)>;

// Reports every file under `root` on the calling thread. Links to folders are never entered, which
// is the whole defence against cycles; links to files count as files. A subfolder that can't be
// listed is passed over. False when `root` itself can't be listed. `pattern` limits the files (not
// the folders) to names that fit it, see SystemMatchesPattern; empty for all.
bool WalkFolder(const std::u16string& root, const WalkOptions& options,
                const FoundFileCallback& callback, const std::u16string& pattern = {});

}  // namespace swr
