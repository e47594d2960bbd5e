#include "tests/support/temp_tree.h"

#include "swr/system/windows_api_win.h"

#include <winioctl.h>

#include <array>
#include <atomic>

#include "swr/paths/path_forms.h"
#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree_system.h"

namespace swr::testing {
namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// With this prefix the system takes every name literally, even one that ends in a blank or a full
// stop; ToLongPath lets the system clean the path first.
std::u16string ExactPath(const std::u16string& path) { return u"\\\\?\\" + path; }

void Check(bool succeeded, const char* action, const std::u16string& path) {
  if (!succeeded) ThrowFailure(action, path, static_cast<long>(GetLastError()));
}

FileHandle OpenFile(const std::u16string& path, DWORD access, DWORD disposition) {
  FileHandle file(
      CreateFileW(AsWide(ExactPath(path)), access, shareAll, nullptr, disposition, 0, nullptr));
  Check(static_cast<bool>(file), "CreateFileW", path);
  return file;
}

void Write(const FileHandle& file, const std::u16string& path, std::string_view bytes) {
  DWORD written = 0;
  Check(WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
            written == bytes.size(),
        "WriteFile", path);
}

void RemoveEntry(const std::u16string& path, DWORD attributes) {
  const std::u16string exactPath = ExactPath(path);
  const auto remove = [&] {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? RemoveDirectoryW(AsWide(exactPath))
                                                        : DeleteFileW(AsWide(exactPath));
  };
  if (remove()) return;
  SetFileAttributesW(AsWide(exactPath), FILE_ATTRIBUTE_NORMAL);
  Check(remove() != FALSE, "removing", path);
}

}  // namespace

std::u16string MakeUniqueFolder() {
  static std::atomic<uint32_t> counter = 0;
  std::array<wchar_t, MAX_PATH + 1> parent;
  const DWORD length = GetTempPathW(static_cast<DWORD>(parent.size()), parent.data());
  for (;;) {
    const std::wstring name =
        L"sumwright-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter);
    std::u16string path = FromWide({parent.data(), length}) + FromWide(name);
    if (CreateDirectoryW(AsWide(ExactPath(path)), nullptr)) return path;
    Check(GetLastError() == ERROR_ALREADY_EXISTS, "CreateDirectoryW", path);
  }
}

void MakeFolder(const std::u16string& path) {
  Check(
      CreateDirectoryW(AsWide(ExactPath(path)), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS,
      "CreateDirectoryW", path);
}

void RemoveTree(const std::u16string& path) {
  WIN32_FIND_DATAW data;
  const HANDLE find = FindFirstFileW(AsWide(ExactPath(path) + u"\\*"), &data);
  Check(find != INVALID_HANDLE_VALUE, "FindFirstFileW", path);
  do {
    const std::wstring_view name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::u16string entry = JoinPath(path, FromWide(name));
    const bool isRealFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                              (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
    if (isRealFolder) {
      RemoveTree(entry);
    } else {
      RemoveEntry(entry, data.dwFileAttributes);
    }
  } while (FindNextFileW(find, &data));
  FindClose(find);
  RemoveEntry(path, FILE_ATTRIBUTE_DIRECTORY);
}

void WriteBytes(const std::u16string& path, std::string_view bytes) {
  Write(OpenFile(path, GENERIC_WRITE, CREATE_ALWAYS), path, bytes);
}

void AppendBytes(const std::u16string& path, std::string_view bytes) {
  const FileHandle file = OpenFile(path, GENERIC_WRITE, OPEN_EXISTING);
  Check(SetFilePointerEx(file.Get(), {}, nullptr, FILE_END), "SetFilePointerEx", path);
  Write(file, path, bytes);
}

void ResizeFile(const std::u16string& path, uint64_t size) {
  const FileHandle file = OpenFile(path, GENERIC_WRITE, OPEN_EXISTING);
  // If the file system has no sparse files, the zeros take space, which is not an error.
  DWORD unused = 0;
  DeviceIoControl(file.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &unused, nullptr);
  LARGE_INTEGER position;
  position.QuadPart = static_cast<LONGLONG>(size);
  Check(SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN) && SetEndOfFile(file.Get()),
        "SetEndOfFile", path);
}

void OverwriteByte(const std::u16string& path, uint64_t position, char byte) {
  const FileHandle file = OpenFile(path, GENERIC_WRITE, OPEN_EXISTING);
  LARGE_INTEGER place;
  place.QuadPart = static_cast<LONGLONG>(position);
  Check(SetFilePointerEx(file.Get(), place, nullptr, FILE_BEGIN), "SetFilePointerEx", path);
  Write(file, path, {&byte, 1});
}

void RemoveFile(const std::u16string& path) {
  Check(DeleteFileW(AsWide(ExactPath(path))), "DeleteFileW", path);
}

void RemoveEmptyFolder(const std::u16string& path) {
  Check(RemoveDirectoryW(AsWide(ExactPath(path))), "RemoveDirectoryW", path);
}

void SetModifiedTime(const std::u16string& path, FileTime time) {
  const FileHandle file = OpenFile(path, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
  const FILETIME modified = {.dwLowDateTime = static_cast<DWORD>(time),
                             .dwHighDateTime = static_cast<DWORD>(time >> 32)};
  Check(SetFileTime(file.Get(), nullptr, nullptr, &modified), "SetFileTime", path);
}

void Hide(const std::u16string& path) {
  Check(SetFileAttributesW(AsWide(ExactPath(path)), FILE_ATTRIBUTE_HIDDEN), "SetFileAttributesW",
        path);
}

WritingHandle::WritingHandle(const std::u16string& path)
    : handle_(reinterpret_cast<intptr_t>(CreateFileW(AsWide(ExactPath(path)),
                                                     GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                                     nullptr, OPEN_EXISTING, 0, nullptr))) {
  Check(handle_ != -1, "CreateFileW", path);
}

WritingHandle::~WritingHandle() { CloseHandle(reinterpret_cast<HANDLE>(handle_)); }

}  // namespace swr::testing
