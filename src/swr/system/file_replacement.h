// A file that is written beside its place and then put there in one step, so that its place holds
// the old content or the whole new one at any time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "swr/system/file.h"
#include "swr/system/unique_handle.h"

namespace swr {

// One file on its way. Used by one thread at a time; at most one in a process, because an interrupt
// (see interrupt.h) can remove only one.
class FileReplacement {
 public:
  FileReplacement() = default;
  // Removes what was written unless it was put in place.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // Makes an empty file beside `path`, which is in the form that the system takes. A device or pipe
  // at `path` is written to directly. All results are 0 or a Windows error code.
  [[nodiscard]] uint32_t Begin(const std::u16string& path);
  [[nodiscard]] uint32_t Write(std::string_view bytes);
  // Puts the file in its place; one that is there already goes, and its permissions stay.
  [[nodiscard]] uint32_t Commit();
  // Removes what was written.
  void Discard();

 private:
  std::u16string path_;
  std::u16string temporary_;  // empty for a device, and when nothing is under way
  UniqueHandle<FileHandleTraits> handle_;
};

}  // namespace swr
