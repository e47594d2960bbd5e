#include "swr/system/directory.h"

#include "swr/system/windows_api_win.h"

#include <string_view>

#include "swr/system/fault_injection.h"
#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"

namespace swr {

std::optional<FolderIdentity> IdentityOfFolder(const std::u16string& folder) {
  constexpr DWORD everything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  // Without this flag the system does not open folders.
  const FileHandle handle(CreateFileW(AsWide(folder), FILE_READ_ATTRIBUTES, everything, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION info;
  if (!handle || !GetFileInformationByHandle(handle.Get(), &info)) return std::nullopt;
  return FolderIdentity{.volume = info.dwVolumeSerialNumber,
                        .number = (uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow};
}

uint32_t ReadDirectory(const std::u16string& folder, std::vector<DirectoryEntry>& entries,
                       bool /*withSizes: always available*/, const std::atomic<bool>* cancel) {
  if (const auto fault = InjectedFault(SystemCall::ListDirectory)) return *fault;
  // With the long prefix the system takes the path literally, and would not accept a doubled
  // separator.
  const bool endsInSeparator = !folder.empty() && folder.back() == u'\\';
  const std::u16string pattern = folder + (endsInSeparator ? u"*" : u"\\*");
  WIN32_FIND_DATAW data;
  const FindHandle find(FindFirstFileExW(AsWide(pattern), FindExInfoBasic, &data,
                                         FindExSearchNameMatch, nullptr,
                                         FIND_FIRST_EX_LARGE_FETCH));
  if (!find) return GetLastError();
  do {
    if (cancel != nullptr && *cancel) break;
    const std::wstring_view name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    const DWORD attributes = data.dwFileAttributes;
    entries.push_back(
        {.name = FromWide(name),
         .size = (uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow,
         .isDirectory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
         .isHidden = (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0,
         .isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
  } while (!InjectedFault(SystemCall::NextEntry) && FindNextFileW(find.Get(), &data));
  return 0;
}

}  // namespace swr
