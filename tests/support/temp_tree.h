// Real files and folders for tests: a tree with a unique name that is gone when the test ends, and
// what a test does to files behind the program's back. Paths are full and in the program's own
// form; names may be of any length and hold whatever the system allows. Everything here throws
// std::runtime_error when the system refuses.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "swr/system/file.h"

namespace swr::testing {

class TempTree {
 public:
  // Makes an empty folder among the system's temporary files.
  TempTree();
  // Removes the folder with all that is in it. Links are removed, not followed.
  ~TempTree();
  TempTree(const TempTree&) = delete;
  TempTree& operator=(const TempTree&) = delete;

  const std::u16string& Root() const { return root_; }
  // The full path of `relative`, whose steps are separated by "/" on every platform.
  std::u16string Path(std::u16string_view relative) const;
  // Both make the folders above too, and return the full path.
  std::u16string AddFolder(std::u16string_view relative);
  std::u16string AddFile(std::u16string_view relative, std::string_view bytes = {});

 private:
  std::u16string root_;
};

// Creates the file or replaces its content.
void WriteBytes(const std::u16string& path, std::string_view bytes);
void AppendBytes(const std::u16string& path, std::string_view bytes);
// Cuts the file or grows it by zeros, which take no space on the disk.
void ResizeFile(const std::u16string& path, uint64_t size);
// Writes one byte in place, within the file.
void OverwriteByte(const std::u16string& path, uint64_t position, char byte);
void RemoveFile(const std::u16string& path);
void RemoveEmptyFolder(const std::u16string& path);
// The time of the last write.
FileTime ModifiedTime(const std::u16string& path);
void SetModifiedTime(const std::u16string& path, FileTime time);
// Makes the entry hidden where that is an attribute. Elsewhere its name has to say so already.
void Hide(const std::u16string& path);

// A file that somebody else holds open for writing, as a downloading program does: others may read
// it. Gone with the object.
class WritingHandle {
 public:
  explicit WritingHandle(const std::u16string& path);
  ~WritingHandle();
  WritingHandle(const WritingHandle&) = delete;
  WritingHandle& operator=(const WritingHandle&) = delete;

 private:
  intptr_t handle_;
};

// `size` bytes of which no stretch repeats soon: byte i is i mod 251, a prime, so that no block of
// an algorithm and no chunk of a file equals its neighbour.
std::string CountingBytes(size_t size);

// A path of at least `units` code units below the tree's root, made of folders that exist and a
// file with this content.
std::u16string AddFileWithLongPath(TempTree& tree, size_t units, std::string_view bytes);

}  // namespace swr::testing
