// Replaces a file atomically: the new content is written to a temporary file in the same folder and
// renamed, so that the path always holds either the old or the complete new content.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "swr/system/file.h"
#include "swr/system/unique_handle.h"

namespace swr {

// One file being written. Used by one thread at a time; at most one at a time in a process, because
// an interrupt (see interrupt.h) can remove only one.
class FileReplacement {
 public:
  FileReplacement() = default;
  // Removes the temporary file unless it was committed.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // Creates a temporary file next to `path`, which is in the form for system calls. A device or
  // pipe at `path` is written to directly. All functions return 0 or a Windows error code.
  [[nodiscard]] uint32_t Begin(const std::u16string& path);
  [[nodiscard]] uint32_t Write(std::string_view bytes);
  // Renames the file to its final path. An existing file there is replaced; its permissions are
  // kept.
  [[nodiscard]] uint32_t Commit();
  // Removes the temporary file.
  void Discard();

 private:
  std::u16string path_;
  std::u16string temporary_;  // empty for a device, and when no file is being written
  UniqueHandle<FileHandleTraits> handle_;
};

}  // namespace swr
