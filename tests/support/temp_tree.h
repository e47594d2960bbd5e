// Real files and folders for tests: a uniquely named tree that is removed when the test ends, and
// changes to files that the code under test does not expect. Paths are full, in the program's own
// form; names may have any length and contain whatever the system allows. All functions throw
// std::runtime_error on failure.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "swr/system/file.h"

namespace swr::testing {

class TempTree {
 public:
  // Creates an empty folder among the system's temporary files.
  TempTree();
  // Removes the folder and all its contents. Links are removed, not followed.
  ~TempTree();
  TempTree(const TempTree&) = delete;
  TempTree& operator=(const TempTree&) = delete;

  const std::u16string& Root() const { return root_; }
  // The full path of `relative`, which uses "/" as the separator on every platform.
  std::u16string Path(std::u16string_view relative) const;
  // Both also create missing parent folders, and return the full path.
  std::u16string AddFolder(std::u16string_view relative);
  std::u16string AddFile(std::u16string_view relative, std::string_view bytes = {});

 private:
  std::u16string root_;
};

// Creates the file or replaces its content.
void WriteBytes(const std::u16string& path, std::string_view bytes);
void AppendBytes(const std::u16string& path, std::string_view bytes);
// Truncates the file, or extends it with zeros, which take no space on the disk.
void ResizeFile(const std::u16string& path, uint64_t size);
// Overwrites one byte of the file.
void OverwriteByte(const std::u16string& path, uint64_t position, char byte);
void RemoveFile(const std::u16string& path);
void RemoveEmptyFolder(const std::u16string& path);
// The time of the last write.
FileTime ModifiedTime(const std::u16string& path);
void SetModifiedTime(const std::u16string& path, FileTime time);
// Sets the hidden attribute. On POSIX systems the name must already begin with a full stop.
void Hide(const std::u16string& path);

// A file that another program holds open for writing, as during a download: others may read it.
// Closed with the object.
class WritingHandle {
 public:
  explicit WritingHandle(const std::u16string& path);
  ~WritingHandle();
  WritingHandle(const WritingHandle&) = delete;
  WritingHandle& operator=(const WritingHandle&) = delete;

 private:
  intptr_t handle_;
};

// `size` bytes; byte i is i mod 251, a prime number, so that no two adjacent blocks of an algorithm
// or chunks of a file are equal.
std::string CountingBytes(size_t size);

// Adds a file with this content whose path has at least `units` code units, and returns the path.
std::u16string AddFileWithLongPath(TempTree& tree, size_t units, std::string_view bytes);

}  // namespace swr::testing
