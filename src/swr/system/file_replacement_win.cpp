#include "swr/system/file_replacement.h"

#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <random>
#include <string>

#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/interrupt.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

std::u16string NumberText(unsigned int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

HANDLE AsHandle(intptr_t value) { return reinterpret_cast<HANDLE>(value); }

}  // namespace

FileReplacement::~FileReplacement() { Discard(); }

uint32_t FileReplacement::Begin(const std::u16string& path) {
  Discard();
  if (const auto fault = InjectedFault(SystemCall::CreateNewFile)) return *fault;
  const DWORD attributes = GetFileAttributesW(AsWide(path));
  const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
  if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ErrorIsDirectory;
  if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return ErrorAccessDenied;
  if (path.starts_with(u"\\\\.\\")) {  // a device such as "\\.\nul"
    handle_.Reset(reinterpret_cast<intptr_t>(CreateFileW(AsWide(path), GENERIC_WRITE,
                                                         FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                         nullptr, OPEN_EXISTING, 0, nullptr)));
    return handle_ ? 0 : GetLastError();
  }
  path_ = path;
  constexpr int attempts = 16;
  std::random_device random;
  for (int i = 0; i < attempts; ++i) {
    const std::u16string temporary = path + u"." + NumberText(random()) + u".part";
    RemoveFileOnInterrupt(temporary);
    // Shared for deleting, so that an interrupt can remove the file while it is open.
    handle_.Reset(reinterpret_cast<intptr_t>(
        CreateFileW(AsWide(temporary), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
    if (handle_) {
      temporary_ = temporary;
      return 0;
    }
    const DWORD error = GetLastError();
    RemoveFileOnInterrupt({});
    if (error != ERROR_FILE_EXISTS) return error;
  }
  return ErrorAccessDenied;
}

uint32_t FileReplacement::Write(std::string_view bytes) {
  constexpr size_t longestPiece = 0x40000000;
  while (!bytes.empty()) {
    if (const auto fault = InjectedFault(SystemCall::WriteFile)) return *fault;
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), longestPiece));
    if (!WriteFile(AsHandle(handle_.Get()), bytes.data(), size, &written, nullptr)) {
      return GetLastError();
    }
    if (written == 0) return ErrorDiskFull;
    bytes.remove_prefix(written);
  }
  return 0;
}

uint32_t FileReplacement::Commit() {
  if (temporary_.empty()) {
    handle_.Reset();
    return 0;
  }
  uint32_t error = 0;
  if (const auto fault = InjectedFault(SystemCall::FlushFile)) error = *fault;
  if (error == 0 && !FlushFileBuffers(AsHandle(handle_.Get()))) error = GetLastError();
  handle_.Reset();
  if (const auto fault = InjectedFault(SystemCall::RenameFile); fault && error == 0) error = *fault;
  if (error == 0 && !MoveFileExW(AsWide(temporary_), AsWide(path_), MOVEFILE_REPLACE_EXISTING)) {
    error = GetLastError();
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
  DeleteFileW(AsWide(temporary_));
  temporary_.clear();
  RemoveFileOnInterrupt({});
}

}  // namespace swr
