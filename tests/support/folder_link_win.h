// A link to a folder, which a folder walk must not follow.
#pragma once

#include <string>

namespace swr::testing {

// Exists while the object does, if the system can create one: on Windows a junction, which needs no
// rights; under Wine a symbolic link of the host, if the host is accessible.
class FolderLink {
 public:
  // Both are full paths. Throws std::runtime_error when Wine's host is accessible but does not
  // create one.
  FolderLink(const std::u16string& path, const std::u16string& target);
  ~FolderLink();
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;

  bool IsThere() const { return isThere_; }

 private:
  std::u16string path_;
  bool isThere_ = false;
};

}  // namespace swr::testing
