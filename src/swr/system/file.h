// Opening and reading one file, and what the file system says about it. Paths are in the form that
// the system takes (see swr/paths/path_forms.h); errors are Windows error codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "swr/system/unique_handle.h"

namespace swr {

// A moment in 100 ns steps since 1601-01-01 UTC, the numbering of FILETIME. 0 means unknown.
using FileTime = uint64_t;

struct FileInfo {
  uint64_t size = 0;  // bytes; 0 for a folder
  FileTime modified = 0;
  bool isDirectory = false;
};

struct ReadResult {
  bool succeeded = false;
  uint32_t bytes = 0;  // 0 with `succeeded` is the end of the file
  uint32_t error = 0;  // meaningful when not `succeeded`; can be 0 even then
};

enum class FileSharing : uint8_t {
  Everything,  // others may read, write, rename and delete the file meanwhile
  ReadWrite,   // others may read and write it, not delete it
};

// The platform's own handle or descriptor; both fit, and -1 is no file on either.
struct FileHandleTraits {
  using Value = intptr_t;
  static constexpr Value Invalid = -1;
  static void Close(Value value) noexcept;
};

// One file opened for reading, closed with the object. Used by one thread at a time.
class File {
 public:
  // Opens an existing file for one pass from its start. On success `file` holds it and the result
  // is 0; on failure `file` is untouched. A folder fails with 5 (access denied) where the system
  // does not open folders, and opens where it does. A pipe or device fails with 50 (not supported):
  // reading one can take for ever.
  [[nodiscard]] static uint32_t Open(const std::u16string& path, FileSharing sharing, File& file);

  // The standard input of the process, whatever it is: a pipe, a file or a terminal. Reading starts
  // where it stands. On success the result is 0; without a standard input it is 6 (invalid handle).
  [[nodiscard]] static uint32_t OpenStandardInput(File& file);

  // Info of the open file itself, whatever its path names by now.
  std::optional<FileInfo> Info() const;
  // Reads up to `size` bytes at the current position. May read less before the end.
  ReadResult Read(void* buffer, uint32_t size);

 private:
  UniqueHandle<FileHandleTraits> handle_;
};

// Info about what a path names, without opening it; links are followed. On failure the result is
// empty and `error` is set; on success `error` is untouched.
std::optional<FileInfo> QueryFileInfo(const std::u16string& path, uint32_t& error);

// Makes the file, or empties the one that is there, and writes the bytes to it, which nobody else
// can open meanwhile. On failure the result is the error code, and the file stays as far as it was
// written.
[[nodiscard]] uint32_t WriteWholeFile(const std::u16string& path, std::string_view bytes);

}  // namespace swr
