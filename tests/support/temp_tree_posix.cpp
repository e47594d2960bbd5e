#include "tests/support/temp_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "swr/system/path_bytes_posix.h"
#include "tests/support/temp_tree_system.h"

namespace swr::testing {
namespace {

void Check(bool succeeded, const char* action, const std::u16string& path) {
  if (!succeeded) ThrowFailure(action, path, errno);
}

void Write(const std::u16string& path, int flags, std::string_view bytes) {
  const int file =
      open(PathBytesFromText(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666);
  Check(file >= 0, "open", path);
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0) {
      const int code = errno;
      close(file);
      ThrowFailure("write", path, code);
    }
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  close(file);
}

}  // namespace

std::u16string MakeUniqueFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "sumwright-XXXXXX").native();
  Check(mkdtemp(path.data()) != nullptr, "mkdtemp", PathTextFromBytes(path));
  return PathTextFromBytes(path);
}

void MakeFolder(const std::u16string& path) {
  Check(mkdir(PathBytesFromText(path).c_str(), 0777) == 0 || errno == EEXIST, "mkdir", path);
}

void RemoveTree(const std::u16string& path) {
  std::error_code error;
  std::filesystem::remove_all(PathBytesFromText(path), error);
  if (error) ThrowFailure("remove_all", path, error.value());
}

void WriteBytes(const std::u16string& path, std::string_view bytes) { Write(path, O_TRUNC, bytes); }

void AppendBytes(const std::u16string& path, std::string_view bytes) {
  Write(path, O_APPEND, bytes);
}

void ResizeFile(const std::u16string& path, uint64_t size) {
  Check(truncate(PathBytesFromText(path).c_str(), static_cast<off_t>(size)) == 0, "truncate", path);
}

void OverwriteByte(const std::u16string& path, uint64_t position, char byte) {
  const int file = open(PathBytesFromText(path).c_str(), O_WRONLY | O_CLOEXEC);
  Check(file >= 0, "open", path);
  const ssize_t written = pwrite(file, &byte, 1, static_cast<off_t>(position));
  close(file);
  Check(written == 1, "pwrite", path);
}

void RemoveFile(const std::u16string& path) {
  Check(unlink(PathBytesFromText(path).c_str()) == 0, "unlink", path);
}

void RemoveEmptyFolder(const std::u16string& path) {
  Check(rmdir(PathBytesFromText(path).c_str()) == 0, "rmdir", path);
}

void SetModifiedTime(const std::u16string& path, FileTime time) {
  constexpr int64_t epochOffset = 11644473600;  // seconds from 1601 to 1970
  const auto ticks = static_cast<int64_t>(time) - epochOffset * 10'000'000;
  const timespec modified = {.tv_sec = ticks / 10'000'000, .tv_nsec = ticks % 10'000'000 * 100};
  const timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, modified};
  Check(utimensat(AT_FDCWD, PathBytesFromText(path).c_str(), times, 0) == 0, "utimensat", path);
}

void Hide(const std::u16string& path) {
  const std::u16string name = path.substr(path.rfind(u'/') + 1);
  if (!name.starts_with(u'.')) ThrowFailure("hide", path, 0);
}

WritingHandle::WritingHandle(const std::u16string& path)
    : handle_(open(PathBytesFromText(path).c_str(), O_WRONLY | O_CLOEXEC)) {
  Check(handle_ >= 0, "open", path);
}

WritingHandle::~WritingHandle() { close(static_cast<int>(handle_)); }

}  // namespace swr::testing
