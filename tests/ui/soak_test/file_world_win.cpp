#include "tests/ui/soak_test/file_world_win.h"

#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <stdexcept>
#include <thread>
#include <utility>

#include "swr/hash/hash_file.h"
#include "swr/paths/path_forms.h"
#include "swr/system/text_services.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/ui/program_process_win.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr uint32_t MissingFile = 2;
constexpr uint32_t LockedFile = 32;
constexpr size_t CrowdSize = 120;

std::shared_ptr<const FileContent> ContentOf(const std::u16string& path) {
  const swr::HashOutcome outcome = swr::HashFile(path, swr::AllAlgosMask, {});
  if (outcome.error != 0) throw std::runtime_error("a test file can't be hashed");
  auto content = std::make_shared<FileContent>();
  content->size = outcome.bytesRead;
  for (const swr::AlgoInfo& info : swr::AllAlgos()) {
    const auto view = outcome.digests[swr::IndexOf(info.id)].View();
    content->digests[info.id] = {view.begin(), view.end()};
  }
  return content;
}

// The window or its signature check may have either file open at this moment.
void Move(const std::u16string& from, const std::u16string& to) {
  const bool moved = WaitFor([&] {
    return MoveFileExW(swr::AsWide(from), swr::AsWide(to), MOVEFILE_REPLACE_EXISTING) != FALSE;
  });
  if (!moved) {
    throw std::runtime_error("a file can't be moved, error " + std::to_string(GetLastError()));
  }
}

// Files before folders at each level, in natural order.
bool ComesBefore(const WorldFile& a, const WorldFile& b) {
  for (size_t level = 0;; ++level) {
    const bool aIsHere = a.steps.size() == level;
    const bool bIsHere = b.steps.size() == level;
    if (aIsHere != bIsHere) return aIsHere;
    const std::u16string& aName = aIsHere ? a.name : a.steps[level];
    const std::u16string& bName = bIsHere ? b.name : b.steps[level];
    if (aName != bName) return swr::SystemCompareNatural(aName, bName) < 0;
    if (aIsHere) return false;
  }
}

std::string NameOf(const WorldFile& file) { return swr::WideToUtf8(file.name); }

}  // namespace

FileWorld::FileWorld(Dice& dice) : dice_(dice) {
  tree_.AddFolder(u"staging");
  root_ = tree_.Path(u"tree");
  crowd_ = tree_.Path(u"crowd");
  for (const char16_t* name :
       {u"tree/empty", u"tree/one", u"tree/a 1.txt", u"tree/a 2.txt", u"tree/a 10.txt",
        u"tree/setup.exe", u"tree/sub 1/x.bin", u"tree/sub 1/y.bin", u"tree/sub 1/z & more.bin",
        u"tree/sub 2/deep/er/x.bin", u"tree/sub 2/deep/q.bin", u"tree/sub 2/w.iso",
        u"tree/Ünïcode ☃/däta.bin", u"tree/Ünïcode ☃/日本.txt", u"tree/sub 1/gone.bin",
        u"tree/gone 1.bin", u"tree/gone 2.bin"}) {
    plainFiles_.push_back(Add(name));
  }
  for (int i = 0; i < 20; ++i) {
    const std::string name = "tree/many/file " + std::to_string(i) + ".dat";
    plainFiles_.push_back(Add(std::u16string(name.begin(), name.end())));
  }
  plainFiles_.push_back(Add(u"tree/hidden.txt", true));
  plainFiles_.push_back(Add(u"tree/secret/inside.txt", true));
  for (const size_t file : plainFiles_) {
    if (files_[file].name.starts_with(u"gone")) continue;
    PutInPlace(file, files_[file].name == u"empty" ? "" : RandomContent());
  }
  constexpr size_t MiB = size_t{1} << 20;
  for (const size_t size : {5 * MiB, 24 * MiB}) {
    const std::string name = "tree/long " + std::to_string(size) + ".img";
    longFiles_.push_back(Add(std::u16string(name.begin(), name.end())));
    PutInPlace(longFiles_.back(), swr::testing::CountingBytes(size));
  }
  for (size_t i = 0; i < CrowdSize; ++i) {
    const std::string name = std::to_string(i);
    const size_t file = Add(u"crowd/" + std::u16string(name.begin(), name.end()));
    PutInPlace(file, name);
  }
  for (const char16_t* name :
       {u"tree/SHA256SUMS", u"tree/all.md5", u"tree/tree.sfv", u"tree/CHECKSUMS",
        u"tree/checksum.txt", u"tree/sub 1/files.sha512", u"tree/rubbish.sha1", u"tree/mixed.b3"}) {
    lists_.push_back(Add(name));
  }
  for (const size_t list : lists_) PutInPlace(list, MakeList(list));
  swr::testing::Hide(root_ + u"\\secret");
  folders_ = {root_,
              root_ + u"\\sub 1",
              root_ + u"\\sub 2",
              root_ + u"\\many",
              root_ + u"\\Ünïcode ☃",
              root_ + u"\\sub 2\\deep"};
}

FileWorld::~FileWorld() { Unlock(); }

size_t FileWorld::Add(const std::u16string& relative, bool isHidden) {
  WorldFile file;
  file.path = tree_.Path(relative);
  const swr::PathParts parts = swr::SplitPath(file.path);
  file.name = parts.name;
  file.folder = parts.folder;
  file.isHidden = isHidden;
  for (size_t start = 0, end; (end = relative.find(u'/', start)) != relative.npos;
       start = end + 1) {
    if (start > 0) file.steps.push_back(relative.substr(start, end - start));
  }
  tree_.AddFolder(relative.substr(0, relative.rfind(u'/')));
  file.states.push_back({.error = MissingFile});
  files_.push_back(std::move(file));
  return files_.size() - 1;
}

std::vector<size_t> FileWorld::Walk(const std::u16string& folder, bool withHidden) const {
  std::vector<size_t> found;
  for (size_t i = 0; i < files_.size(); ++i) {
    const WorldFile& file = files_[i];
    if (!file.path.starts_with(folder + u"\\") || !file.IsThere()) continue;
    if (!file.isHidden || withHidden) found.push_back(i);
  }
  std::ranges::sort(found, [&](size_t a, size_t b) { return ComesBefore(files_[a], files_[b]); });
  return found;
}

std::string FileWorld::RandomBytes(size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(dice_.Pick(256));
  return bytes;
}

// Usually small, sometimes equal to another file, and occasionally too long for one chunk.
std::string FileWorld::RandomContent() {
  switch (dice_.Pick(8)) {
    case 0:
      return {};
    case 1:
      return "not changed";
    case 2:
      return swr::testing::CountingBytes(1'048'576 + dice_.Pick(2'000'000));
    case 3:
      return RandomBytes(1'000 + dice_.Pick(100'000));
    default:
      return RandomBytes(1 + dice_.Pick(3'000));
  }
}

void FileWorld::PutInPlace(size_t file, const std::string& bytes) {
  const std::u16string staged = tree_.Path(u"staging/next");
  swr::testing::WriteBytes(staged, bytes);
  FileState state{.content = ContentOf(staged)};
  Move(staged, files_[file].path);
  if (files_[file].name == u"hidden.txt") swr::testing::Hide(files_[file].path);
  files_[file].states.push_back(std::move(state));
}

std::string FileWorld::Replace(size_t file) {
  if (file == lockedFile_) Unlock();
  PutInPlace(file, RandomContent());
  return "replaced " + NameOf(files_[file]);
}

std::string FileWorld::Remove(size_t file) {
  if (!files_[file].IsThere()) return Replace(file);
  if (file == lockedFile_) Unlock();
  // Moved, not deleted: an open file would remain until it is closed, neither usable nor gone.
  Move(files_[file].path, tree_.Path(u"staging/removed"));
  files_[file].states.push_back({.error = MissingFile});
  return "removed " + NameOf(files_[file]);
}

std::string FileWorld::Lock(size_t file) {
  Unlock();
  if (!files_[file].IsThere()) return Replace(file);
  HANDLE lock = INVALID_HANDLE_VALUE;
  const bool isLocked = WaitFor(
      [&] {
        lock = CreateFileW(swr::AsWide(files_[file].path), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                           0, nullptr);
        return lock != INVALID_HANDLE_VALUE;
      },
      std::chrono::milliseconds(500));
  if (!isLocked) return "nothing: the window is reading " + NameOf(files_[file]);
  lock_ = reinterpret_cast<intptr_t>(lock);
  lockedFile_ = file;
  FileState state = files_[file].Now();
  state.error = LockedFile;
  files_[file].states.push_back(std::move(state));
  return "locked " + NameOf(files_[file]);
}

void FileWorld::Unlock() {
  if (!lockedFile_) return;
  CloseHandle(reinterpret_cast<HANDLE>(lock_));
  FileState state = files_[*lockedFile_].Now();
  state.error = 0;
  files_[*lockedFile_].states.push_back(std::move(state));
  lockedFile_.reset();
}

std::string FileWorld::Tear(size_t file) {
  if (!files_[file].IsThere()) return Replace(file);
  if (file == lockedFile_) Unlock();
  const std::u16string& path = files_[file].path;
  files_[file].states.push_back({.isTorn = true});
  for (int i = 0; i < 4; ++i) {
    swr::testing::AppendBytes(path, RandomBytes(1 + dice_.Pick(5'000)));
    std::this_thread::sleep_for(std::chrono::milliseconds(dice_.Pick(20)));
  }
  if (dice_.OneIn(2)) swr::testing::ResizeFile(path, dice_.Pick(4'000));
  files_[file].states.push_back({.content = ContentOf(path)});
  return "wrote to " + NameOf(files_[file]);
}

std::string FileWorld::RewriteList(size_t list) {
  if (list == lockedFile_) Unlock();
  PutInPlace(list, MakeList(list));
  return "rewrote " + NameOf(files_[list]);
}

// A line for a random file: usually correct at this moment, otherwise wrong.
std::string FileWorld::LineFor(size_t list, ListedLine& line) {
  const WorldFile& self = files_[list];
  const bool isSfv = self.name.ends_with(u".sfv");
  const bool isTagged = self.name == u"CHECKSUMS";
  AlgoId algo = static_cast<AlgoId>(dice_.Pick(swr::AlgoCount));
  bool isNamed = true;
  if (isSfv) {
    algo = AlgoId::Crc32;
  } else if (self.name.starts_with(u"SHA256")) {
    algo = AlgoId::Sha256;
  } else if (self.name.ends_with(u".md5")) {
    algo = AlgoId::Md5;
  } else if (self.name.ends_with(u".sha512")) {
    algo = AlgoId::Sha512;
  } else if (self.name.ends_with(u".b3")) {
    algo = AlgoId::Blake3;
  } else {
    isNamed = isTagged;
  }
  do {
    line.file = dice_.Of(plainFiles_);
  } while (!files_[line.file].path.starts_with(self.folder + u"\\"));
  const FileState& now = files_[line.file].Now();
  DigestBytes bytes = now.content != nullptr ? now.content->digests.at(algo)
                                             : DigestBytes(swr::GetAlgo(algo).digestSize, 7);
  if (dice_.OneIn(6)) bytes[dice_.Pick(bytes.size())] ^= 1;
  line.claim.algos = isNamed ? std::vector{algo} : ReferenceAlgosOfSize(bytes.size());
  const std::string hex = swr::WideToUtf8(ReferenceHex(bytes, dice_.OneIn(3)));
  line.claim.bytes = std::move(bytes);
  std::string name = swr::WideToUtf8(files_[line.file].path.substr(self.folder.size() + 1));
  std::ranges::replace(name, '\\', '/');
  if (isSfv) return name + " " + hex;
  if (isTagged) return std::string(swr::GetAlgo(algo).upperTag) + " (" + name + ") = " + hex;
  return hex + (dice_.OneIn(2) ? "  " : " *") + name;
}

std::string FileWorld::MakeList(size_t list) {
  files_[list].list.emplace();
  const std::u16string& name = files_[list].name;
  if (name.starts_with(u"rubbish")) return "There are no checksums here.\n\n# nor here\n";
  const std::string end = name.ends_with(u".sha512") ? "\r\n" : "\n";
  std::string text = name.ends_with(u".sha512") ? "\xEF\xBB\xBF" : "";
  uint32_t number = 0;
  for (size_t count = 1 + dice_.Pick(15); count > 0; --count) {
    if (dice_.OneIn(8)) {
      ++number;
      text += (name.ends_with(u".b3") ? "this line says nothing" : "; a comment") + end;
    }
    ListedLine line;
    line.number = ++number;
    text += LineFor(list, line) + end;
    files_[list].list->push_back(std::move(line));
  }
  return text;
}

void FileWorld::ForgetEarlierStates() {
  for (WorldFile& file : files_) file.states.erase(file.states.begin(), file.states.end() - 1);
}

}  // namespace app::testing
