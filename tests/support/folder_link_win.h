// A link to a folder, which no walk may follow.
#pragma once

#include <string>

namespace swr::testing {

// There as long as the object lives, if the system can make one: on Windows a junction, which needs
// no rights; under Wine a link of the system below, if that can be reached.
class FolderLink {
 public:
  // Both are full paths. Throws std::runtime_error when the host of Wine can be reached and does
  // not make one.
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
