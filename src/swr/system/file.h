// Opening, reading and writing one file, and its size and time. Paths are in the form for system
// calls (ToLongPath in swr/paths/path_forms.h); errors are Windows error codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "swr/system/unique_handle.h"

namespace swr {

// A time in units of 100 ns since 1601-01-01 UTC, as in FILETIME. 0 means unknown.
using FileTime = uint64_t;

struct FileInfo {
  uint64_t size = 0;      // bytes; 0 for a folder
  FileTime modified = 0;  // last write
  bool isDirectory = false;
};

struct ReadResult {
  bool succeeded = false;
  uint32_t bytes = 0;  // if succeeded; 0 is the end of the file
  uint32_t error = 0;  // if not succeeded; can be 0 even then
};

enum class FileSharing : uint8_t {
  Everything,  // others may read, write, rename and delete the file in the meantime
  ReadWrite,   // others may read and write it, not delete it
};

// A HANDLE or a file descriptor; -1 means no file on either platform.
struct FileHandleTraits {
  using Value = intptr_t;
  static constexpr Value Invalid = -1;
  static void Close(Value value) noexcept;
};

// One file opened for reading, closed with the object. Used by one thread at a time.
class File {
 public:
  // Opens an existing file for sequential reading from its start. Returns 0 and replaces `file`, or
  // returns an error and leaves `file` unchanged. A folder fails with 5 (access denied) where the
  // system does not open folders, and opens where it does. A pipe or character device fails with 50
  // (not supported), because reading one may never end. Sharing has no effect on POSIX systems.
  [[nodiscard]] static uint32_t Open(const std::u16string& path, FileSharing sharing, File& file);

  // The standard input of the process, whatever it is: a pipe, a file or a terminal. Reading starts
  // at its current position. Returns 0, or 6 (invalid handle) if there is no standard input.
  [[nodiscard]] static uint32_t OpenStandardInput(File& file);

  // Information about the open file itself, even if its path now names another file. Nothing on
  // failure.
  std::optional<FileInfo> Info() const;
  // The same, as of the moment when the file was opened.
  std::optional<FileInfo> InfoAtOpening() const;
  // Reads up to `size` bytes at the current position and advances it. May read fewer bytes before
  // the end of the file.
  ReadResult Read(void* buffer, uint32_t size);

 private:
  UniqueHandle<FileHandleTraits> handle_;
  std::optional<FileInfo> infoAtOpening_;
};

// Information about the file or folder at a path, without opening it; links are followed. On
// failure returns nothing and sets `error`; on success `error` is unchanged.
std::optional<FileInfo> QueryFileInfo(const std::u16string& path, uint32_t& error);

// One file opened for writing, closed with the object. Used by one thread at a time.
class OutputFile {
 public:
  // Creates the file or deletes its content. On Windows nobody else can open it in the meantime.
  // Returns 0 and replaces `file`, or returns an error and leaves `file` unchanged.
  [[nodiscard]] static uint32_t Create(const std::u16string& path, OutputFile& file);
  // Appends the bytes, at most 4 GiB. Returns 0, or an error; the file then contains what was
  // written so far.
  [[nodiscard]] uint32_t Write(std::string_view bytes);

 private:
  UniqueHandle<FileHandleTraits> handle_;
};

// Creates the file or replaces its content; see OutputFile.
[[nodiscard]] uint32_t WriteWholeFile(const std::u16string& path, std::string_view bytes);

}  // namespace swr
