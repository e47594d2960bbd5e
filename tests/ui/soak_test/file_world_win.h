// The files of a soak test: real files that are replaced, removed, locked and written to while the
// window works, with every state of each of them since the window was last compared with its model.
// The digests are computed here, before the window sees a file.
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
  std::shared_ptr<const FileContent> content;  // null where it is not there or is being written
  uint32_t error = 0;                          // the Windows error of whoever reads it
  bool isTorn = false;                         // it was written to, so anything may be read
};

struct ListedLine {
  size_t file = 0;
  ReferenceClaim claim;
  uint32_t number = 0;  // of the line, from 1
};

struct WorldFile {
  std::u16string path;
  std::u16string name;
  std::u16string folder;
  std::vector<std::u16string> steps;            // the folders between the root and the file
  bool isHidden = false;                        // or in a folder that is
  std::vector<FileState> states;                // the last is the present one
  std::optional<std::vector<ListedLine>> list;  // of a checksum file; empty for a useless one

  const FileState& Now() const { return states.back(); }
  bool IsThere() const { return Now().error != 2; }
};

// Throws std::runtime_error when the system refuses what has to work.
class FileWorld {
 public:
  explicit FileWorld(Dice& dice);
  ~FileWorld();
  FileWorld(const FileWorld&) = delete;
  FileWorld& operator=(const FileWorld&) = delete;

  const std::vector<WorldFile>& Files() const { return files_; }
  // Full paths of folders with files in them or below them.
  const std::vector<std::u16string>& Folders() const { return folders_; }
  // A folder of very many small files, outside the others.
  const std::u16string& Crowd() const { return crowd_; }
  // The files that a drop of this folder adds, in the order of rows.
  std::vector<size_t> Walk(const std::u16string& folder, bool withHidden) const;
  // The numbers of the checksum files, of some long files, which stay as they are, and of the other
  // ones outside of the crowd.
  const std::vector<size_t>& Lists() const { return lists_; }
  const std::vector<size_t>& LongFiles() const { return longFiles_; }
  const std::vector<size_t>& PlainFiles() const { return plainFiles_; }
  // A place for a file that the program is to write.
  std::u16string SavePlace() const { return tree_.Path(u"staging/saved"); }

  // Each of these is atomic for whoever opens the file, except Tear. They return a description.
  std::string Replace(size_t file);
  std::string TakeAway(size_t file);
  // Nobody else can open the file until Unlock.
  std::string Lock(size_t file);
  void Unlock();
  bool HoldsAny() const { return lockedFile_.has_value(); }
  // Writes to the file in its place, bit by bit.
  std::string Tear(size_t file);
  std::string RewriteList(size_t file);

  // The earlier states of the files are not needed any more.
  void ForgetPast();

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
  intptr_t holder_ = 0;
};

}  // namespace app::testing
