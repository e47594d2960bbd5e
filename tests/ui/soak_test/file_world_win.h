// The files of the soak test: real files that are replaced, removed, locked and written to while
// the window works. Every state of each file since the last comparison of the window with its model
// is kept. The digests are computed in advance, before the window sees a file.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/reference_window.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/soak_test/dice.h"

namespace app::testing {

struct FileContent {
  uint64_t size = 0;
  std::map<swr::AlgoId, DigestBytes> digests;  // of all algorithms
};

// One state of a file.
struct FileState {
  std::shared_ptr<const FileContent> content;  // null if missing or being written
  uint32_t error = 0;                          // the Windows error when it is read
  bool isTorn = false;                         // written in place, so any content may be read
};

struct ListedLine {
  size_t file = 0;
  ReferenceClaim claim;
  uint32_t number = 0;  // line number, from 1
};

struct WorldFile {
  std::u16string path;
  std::u16string name;
  std::u16string folder;
  std::vector<std::u16string> steps;            // the folders between the root and the file
  bool isHidden = false;                        // itself or one of its folders
  std::vector<FileState> states;                // the last is the current one
  std::optional<std::vector<ListedLine>> list;  // of a checksum file; may be empty

  const FileState& Now() const { return states.back(); }
  bool IsThere() const { return Now().error != 2; }
};

// Throws std::runtime_error when a necessary system call fails.
class FileWorld {
 public:
  explicit FileWorld(Dice& dice);
  ~FileWorld();
  FileWorld(const FileWorld&) = delete;
  FileWorld& operator=(const FileWorld&) = delete;

  const std::vector<WorldFile>& Files() const { return files_; }
  // Full paths of folders that contain files, directly or in subfolders.
  const std::vector<std::u16string>& Folders() const { return folders_; }
  // A folder with a great many small files ("the crowd"), outside the others.
  const std::u16string& Crowd() const { return crowd_; }
  // The files that a drop of this folder adds, in the order of rows.
  std::vector<size_t> Walk(const std::u16string& folder, bool withHidden) const;
  // The indexes of the checksum files, of some long files, which never change, and of all others
  // outside the crowd.
  const std::vector<size_t>& Lists() const { return lists_; }
  const std::vector<size_t>& LongFiles() const { return longFiles_; }
  const std::vector<size_t>& PlainFiles() const { return plainFiles_; }
  // A path for a file that the program will write.
  std::u16string SavePath() const { return tree_.Path(u"staging/saved"); }

  // For readers, each of these is atomic except Tear. They return a description.
  std::string Replace(size_t file);
  std::string Remove(size_t file);
  // No other program can open the file until Unlock.
  std::string Lock(size_t file);
  void Unlock();
  // Overwrites the file in place, piece by piece.
  std::string Tear(size_t file);
  std::string RewriteList(size_t file);

  // The earlier states of the files are no longer needed.
  void ForgetEarlierStates();

 private:
  size_t Add(const std::u16string& relative, bool isHidden = false);
  std::string RandomBytes(size_t size);
  std::string RandomContent();
  void PutInPlace(size_t file, const std::string& bytes);
  std::string MakeList(size_t list);
  std::string LineFor(size_t list, ListedLine& line);

  Dice& dice_;
  swr::testing::TempTree tree_;
  std::u16string root_;
  std::u16string crowd_;
  std::vector<WorldFile> files_;
  std::vector<std::u16string> folders_;
  std::vector<size_t> lists_;
  std::vector<size_t> longFiles_;
  std::vector<size_t> plainFiles_;
  std::optional<size_t> lockedFile_;
  intptr_t lock_ = 0;
};

}  // namespace app::testing
