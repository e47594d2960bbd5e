#include "swr/system/file_replacement.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <memory>
#include <random>

#include "swr/system/errno_posix.h"
#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/interrupt.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/system/write_all_posix.h"

namespace swr {
namespace {

int AsDescriptor(intptr_t value) { return static_cast<int>(value); }

// The target of a link at `path`, so that the target is replaced and not the link.
std::string TargetOf(const std::string& path) {
  struct Free {
    void operator()(char* text) const { free(text); }
  };
  const std::unique_ptr<char, Free> real(realpath(path.c_str(), nullptr));
  return real ? std::string(real.get()) : path;
}

}  // namespace

FileReplacement::~FileReplacement() { Discard(); }

uint32_t FileReplacement::Begin(const std::u16string& path) {
  Discard();
  if (const auto fault = InjectedFault(SystemCall::CreateNewFile)) return *fault;
  const std::string target = TargetOf(PathBytesFromText(path));
  struct stat status = {};
  const bool exists = stat(target.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) return ErrorIsDirectory;
  if (exists && !S_ISREG(status.st_mode)) {
    handle_.Reset(open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    return handle_ ? 0 : ErrorFromErrno(errno);
  }
  path_ = PathTextFromBytes(target);
  // O_EXCL: an existing file must not be opened, even if it happens to have this random name.
  constexpr int attempts = 16;
  std::random_device random;
  for (int i = 0; i < attempts; ++i) {
    const std::string name = target + "." + std::to_string(random()) + ".part";
    constexpr mode_t everybody = 0666;  // minus the user's umask
    // Registered before it exists: an interrupt in between finds nothing to remove.
    const std::u16string temporary = PathTextFromBytes(name);
    RemoveFileOnInterrupt(temporary);
    handle_.Reset(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybody));
    if (handle_) {
      temporary_ = temporary;
      if (exists) fchmod(AsDescriptor(handle_.Get()), status.st_mode & 07777);
      return 0;
    }
    const int error = errno;
    RemoveFileOnInterrupt({});
    if (error != EEXIST) return ErrorFromErrno(error);
  }
  return ErrorAccessDenied;
}

uint32_t FileReplacement::Write(std::string_view bytes) {
  return WriteAll(AsDescriptor(handle_.Get()), bytes);
}

uint32_t FileReplacement::Commit() {
  if (temporary_.empty()) {
    const int closed = close(AsDescriptor(handle_.Release()));
    return closed == 0 ? 0 : ErrorFromErrno(errno);
  }
  uint32_t error = 0;
  if (const auto fault = InjectedFault(SystemCall::FlushFile)) error = *fault;
  // After a power failure the name must not refer to a file whose content never reached the disk.
  if (error == 0 && fsync(AsDescriptor(handle_.Get())) != 0) error = ErrorFromErrno(errno);
  if (error == 0 && close(AsDescriptor(handle_.Release())) != 0) error = ErrorFromErrno(errno);
  if (const auto fault = InjectedFault(SystemCall::RenameFile); fault && error == 0) error = *fault;
  if (error == 0 &&
      rename(PathBytesFromText(temporary_).c_str(), PathBytesFromText(path_).c_str()) != 0) {
    error = ErrorFromErrno(errno);
  }
  if (error != 0) {
    Discard();
    return error;
  }
  temporary_.clear();
  RemoveFileOnInterrupt({});
  return 0;
}

void FileReplacement::Discard() {
  handle_.Reset();
  if (temporary_.empty()) return;
  unlink(PathBytesFromText(temporary_).c_str());
  temporary_.clear();
  RemoveFileOnInterrupt({});
}

}  // namespace swr
