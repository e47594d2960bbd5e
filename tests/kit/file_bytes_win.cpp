#include "tests/kit/file_bytes_win.h"

#include "swr/system/unique_handle.h"

namespace kit {
namespace {

struct FileTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE file) noexcept { CloseHandle(file); }
};
using File = swr::UniqueHandle<FileTraits>;

// Test files have paths of any length, and names that end in blanks.
std::wstring Exact(const std::wstring& path) {
  return path.starts_with(L"\\\\") ? path : L"\\\\?\\" + path;
}

bool RemoveEntry(const std::wstring& path, DWORD attributes) {
  const auto remove = [&] {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? RemoveDirectoryW(path.c_str())
                                                        : DeleteFileW(path.c_str());
  };
  if (remove()) return true;
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  return remove() != FALSE;
}

bool RemoveExact(const std::wstring& path) {
  WIN32_FIND_DATAW data = {};
  const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &data);
  bool isRemoved = true;
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const std::wstring name = data.cFileName;
      if (name == L"." || name == L"..") continue;
      const DWORD attributes = data.dwFileAttributes;
      const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
                            (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
      const std::wstring entry = path + L"\\" + name;
      isRemoved &= isFolder ? RemoveExact(entry) : RemoveEntry(entry, attributes);
    } while (FindNextFileW(search, &data));
    FindClose(search);
  }
  return RemoveEntry(path, FILE_ATTRIBUTE_DIRECTORY) && isRemoved;
}

}  // namespace

std::optional<std::string> ReadBytes(const std::wstring& path) {
  const File file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, 0, nullptr));
  LARGE_INTEGER size = {};
  if (!file || !GetFileSizeEx(file.Get(), &size)) return std::nullopt;
  std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
  DWORD read = 0;
  if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
      read != bytes.size()) {
    return std::nullopt;
  }
  return bytes;
}

bool WriteBytes(const std::wstring& path, const std::string& bytes) {
  const std::wstring fresh = path + L".new";
  {
    const File file(
        CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    if (!file ||
        !WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
        written != bytes.size() || !FlushFileBuffers(file.Get())) {
      return false;
    }
  }
  return MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

bool RemoveFolder(const std::wstring& path) {
  if (!Exists(path)) return true;
  // A program that has just been terminated, or a virus scanner, may keep a file open for a moment.
  constexpr int attempts = 20;
  for (int i = 0; i < attempts; ++i) {
    if (RemoveExact(Exact(path))) return true;
    Sleep(100);
  }
  return !Exists(path);
}

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace kit
