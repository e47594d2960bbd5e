#include "swr/system/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <string_view>

#include "swr/system/errno_posix.h"
#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/system/unique_handle.h"

namespace swr {
namespace {

struct DirectoryStreamTraits {
  using Value = DIR*;
  static constexpr DIR* Invalid = nullptr;
  static void Close(DIR* value) noexcept { closedir(value); }
};

DirectoryEntry MakeEntry(DIR* stream, const dirent& found, bool withSizes) {
  DirectoryEntry entry{.name = PathTextFromBytes(found.d_name),
                       .isHidden = found.d_name[0] == '.',
                       .isLink = found.d_type == DT_LNK};
  if (found.d_type == DT_DIR) {
    entry.isDirectory = true;
    return entry;
  }
  if (found.d_type == DT_REG && !withSizes) return entry;
  if (InjectedFault(SystemCall::EntryInfo)) return entry;
  struct stat status;
  // Some file systems don't report the type with the entry.
  if (found.d_type == DT_UNKNOWN &&
      fstatat(dirfd(stream), found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
    entry.isLink = S_ISLNK(status.st_mode);
  }
  // A link without a target is a file of size 0, which is missing when it is opened.
  if (fstatat(dirfd(stream), found.d_name, &status, 0) == 0) {
    entry.isDirectory = S_ISDIR(status.st_mode);
    if (!entry.isDirectory) entry.size = static_cast<uint64_t>(status.st_size);
  }
  return entry;
}

}  // namespace

std::optional<FolderIdentity> IdentityOfFolder(const std::u16string& folder) {
  struct stat status;
  if (stat(PathBytesFromText(folder).c_str(), &status) != 0) return std::nullopt;
  return FolderIdentity{.volume = status.st_dev, .number = status.st_ino};
}

uint32_t ReadDirectory(const std::u16string& folder, std::vector<DirectoryEntry>& entries,
                       bool withSizes, const std::atomic<bool>* cancel) {
  if (const auto fault = InjectedFault(SystemCall::ListDirectory)) return *fault;
  const UniqueHandle<DirectoryStreamTraits> stream(opendir(PathBytesFromText(folder).c_str()));
  if (!stream) {
    // Windows distinguishes a missing folder from a missing file; here both are ENOENT.
    return errno == ENOENT ? ErrorPathNotFound : ErrorFromErrno(errno);
  }
  while (!InjectedFault(SystemCall::NextEntry)) {
    if (cancel != nullptr && *cancel) break;
    const dirent* found = readdir(stream.Get());
    if (found == nullptr) break;
    const std::string_view name = found->d_name;
    if (name == "." || name == "..") continue;
    entries.push_back(MakeEntry(stream.Get(), *found, withSizes));
  }
  return 0;
}

}  // namespace swr
