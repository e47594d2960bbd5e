#include "swr/system/file.h"

#include "swr/system/windows_api_win.h"

#include <utility>

#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

HANDLE AsHandle(intptr_t value) { return reinterpret_cast<HANDLE>(value); }

uint64_t Join(DWORD high, DWORD low) { return (uint64_t{high} << 32) | low; }

}  // namespace

void FileHandleTraits::Close(intptr_t value) noexcept { CloseHandle(AsHandle(value)); }

uint32_t File::Open(const std::u16string& path, FileSharing sharing, File& file) {
  if (const auto fault = InjectedFault(SystemCall::OpenFile)) return *fault;
  DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
  if (sharing == FileSharing::Everything) share |= FILE_SHARE_DELETE;
  const HANDLE handle =
      CreateFileW(AsWide(path), FILE_READ_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, share, nullptr,
                  OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return GetLastError();
  File opened;
  opened.handle_.Reset(reinterpret_cast<intptr_t>(handle));
  if (const auto fault = InjectedFault(SystemCall::FileKind)) return *fault;
  // Reading a pipe or a character device may never end.
  const DWORD kind = GetFileType(handle);
  if (kind == FILE_TYPE_CHAR || kind == FILE_TYPE_PIPE) return ErrorNotSupported;
  file = std::move(opened);
  return 0;
}

uint32_t File::OpenStandardInput(File& file) {
  if (const auto fault = InjectedFault(SystemCall::OpenFile)) return *fault;
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  if (input == nullptr || input == INVALID_HANDLE_VALUE) return ErrorInvalidHandle;
  const HANDLE process = GetCurrentProcess();
  HANDLE handle = nullptr;
  if (!DuplicateHandle(process, input, process, &handle, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
    return GetLastError();
  }
  file.handle_.Reset(reinterpret_cast<intptr_t>(handle));
  return 0;
}

std::optional<FileInfo> File::Info() const {
  if (InjectedFault(SystemCall::FileInfo)) return std::nullopt;
  // Not GetFileInformationByHandle, which also queries the volume: that costs more than all the
  // other work on a small file.
  FILE_BASIC_INFO basic;
  FILE_STANDARD_INFO standard;
  const HANDLE handle = AsHandle(handle_.Get());
  if (!GetFileInformationByHandleEx(handle, FileBasicInfo, &basic, sizeof basic) ||
      !GetFileInformationByHandleEx(handle, FileStandardInfo, &standard, sizeof standard)) {
    return std::nullopt;
  }
  return FileInfo{.size = static_cast<uint64_t>(standard.EndOfFile.QuadPart),
                  .modified = static_cast<FileTime>(basic.LastWriteTime.QuadPart),
                  .isDirectory = standard.Directory != FALSE};
}

std::optional<FileInfo> File::InfoAtOpening() const { return Info(); }

ReadResult File::Read(void* buffer, uint32_t size) {
  if (const auto fault = InjectedFault(SystemCall::ReadFile)) return {.error = *fault};
  DWORD bytes = 0;
  if (!ReadFile(AsHandle(handle_.Get()), buffer, size, &bytes, nullptr)) {
    return {.error = GetLastError()};
  }
  return {.succeeded = true, .bytes = bytes};
}

std::optional<FileInfo> QueryFileInfo(const std::u16string& path, uint32_t& error) {
  if (const auto fault = InjectedFault(SystemCall::PathInfo)) {
    error = *fault;
    return std::nullopt;
  }
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(AsWide(path), GetFileExInfoStandard, &data)) {
    error = GetLastError();
    return std::nullopt;
  }
  return FileInfo{
      .size = Join(data.nFileSizeHigh, data.nFileSizeLow),
      .modified = Join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
      .isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
}

uint32_t OutputFile::Create(const std::u16string& path, OutputFile& file) {
  if (const auto fault = InjectedFault(SystemCall::CreateNewFile)) return *fault;
  const HANDLE handle = CreateFileW(AsWide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return GetLastError();
  file.handle_.Reset(reinterpret_cast<intptr_t>(handle));
  return 0;
}

uint32_t OutputFile::Write(std::string_view bytes) {
  if (const auto fault = InjectedFault(SystemCall::WriteFile)) return *fault;
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  if (!WriteFile(AsHandle(handle_.Get()), bytes.data(), size, &written, nullptr)) {
    return GetLastError();
  }
  // A short write sets no error code; it happens when the volume is full.
  return written == bytes.size() ? 0 : ErrorDiskFull;
}

uint32_t WriteWholeFile(const std::u16string& path, std::string_view bytes) {
  OutputFile file;
  const uint32_t error = OutputFile::Create(path, file);
  return error != 0 ? error : file.Write(bytes);
}

}  // namespace swr
