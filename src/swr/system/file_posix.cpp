#include "swr/system/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "swr/system/errno_posix.h"
#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/file_time_posix.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/system/write_all_posix.h"

namespace swr {
namespace {

int AsDescriptor(intptr_t value) { return static_cast<int>(value); }

FileInfo InfoFrom(const struct stat& status) {
  const int64_t ticks =
      (status.st_mtim.tv_sec + FileTimeEpoch) * TicksPerSecond + status.st_mtim.tv_nsec / 100;
  const bool isDirectory = S_ISDIR(status.st_mode);
  return {.size = isDirectory ? 0 : static_cast<uint64_t>(status.st_size),
          .modified = static_cast<FileTime>(ticks),
          .isDirectory = isDirectory};
}

}  // namespace

void FileHandleTraits::Close(intptr_t value) noexcept { close(AsDescriptor(value)); }

uint32_t File::Open(const std::u16string& path, FileSharing /*sharing*/, File& file) {
  if (const auto fault = InjectedFault(SystemCall::OpenFile)) return *fault;
  // Without O_NONBLOCK opening a named pipe would wait for its other end.
  const int descriptor =
      open(PathBytesFromText(path).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (descriptor < 0) return ErrorFromErrno(errno);
  File opened;
  opened.handle_.Reset(descriptor);
  if (const auto fault = InjectedFault(SystemCall::FileKind)) return *fault;
  struct stat status;
  if (fstat(descriptor, &status) != 0) return ErrorFromErrno(errno);
  // Reading a pipe, a socket or a device may never end.
  if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) return ErrorNotSupported;
  // Shorter files are read ahead completely anyway.
  constexpr off_t defaultReadAhead = 131072;
  if (status.st_size > defaultReadAhead) posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
  opened.infoAtOpening_ = InfoFrom(status);
  file = std::move(opened);
  return 0;
}

uint32_t File::OpenStandardInput(File& file) {
  if (const auto fault = InjectedFault(SystemCall::OpenFile)) return *fault;
  const int descriptor = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
  if (descriptor < 0) return ErrorFromErrno(errno);
  file.handle_.Reset(descriptor);
  file.infoAtOpening_.reset();
  return 0;
}

std::optional<FileInfo> File::Info() const {
  if (InjectedFault(SystemCall::FileInfo)) return std::nullopt;
  struct stat status;
  if (fstat(AsDescriptor(handle_.Get()), &status) != 0) return std::nullopt;
  return InfoFrom(status);
}

std::optional<FileInfo> File::InfoAtOpening() const {
  return InjectedFault(SystemCall::FileInfo) ? std::nullopt : infoAtOpening_;
}

ReadResult File::Read(void* buffer, uint32_t size) {
  if (const auto fault = InjectedFault(SystemCall::ReadFile)) return {.error = *fault};
  ssize_t bytes = 0;
  do {
    bytes = read(AsDescriptor(handle_.Get()), buffer, size);
  } while (bytes < 0 && errno == EINTR);
  if (bytes < 0) return {.error = ErrorFromErrno(errno)};
  return {.succeeded = true, .bytes = static_cast<uint32_t>(bytes)};
}

std::optional<FileInfo> QueryFileInfo(const std::u16string& path, uint32_t& error) {
  if (const auto fault = InjectedFault(SystemCall::PathInfo)) {
    error = *fault;
    return std::nullopt;
  }
  struct stat status;
  if (stat(PathBytesFromText(path).c_str(), &status) != 0) {
    error = ErrorFromErrno(errno);
    return std::nullopt;
  }
  return InfoFrom(status);
}

uint32_t OutputFile::Create(const std::u16string& path, OutputFile& file) {
  if (const auto fault = InjectedFault(SystemCall::CreateNewFile)) return *fault;
  constexpr mode_t everybody = 0666;  // minus the user's umask
  // Without O_NONBLOCK opening a named pipe would wait for a reader.
  const int descriptor =
      open(PathBytesFromText(path).c_str(),
           O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, everybody);
  if (descriptor < 0) return ErrorFromErrno(errno);
  file.handle_.Reset(descriptor);
  return 0;
}

uint32_t OutputFile::Write(std::string_view bytes) {
  return WriteAll(AsDescriptor(handle_.Get()), bytes);
}

uint32_t WriteWholeFile(const std::u16string& path, std::string_view bytes) {
  OutputFile file;
  const uint32_t error = OutputFile::Create(path, file);
  return error != 0 ? error : file.Write(bytes);
}

}  // namespace swr
