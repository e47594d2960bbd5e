#include "swr/system/full_path.h"

#include "swr/system/windows_api_win.h"

#include <array>

#include "swr/system/fault_injection.h"
#include "swr/system/wide_text_win.h"

namespace swr {

std::optional<std::u16string> SystemFullPath(const std::u16string& path) {
  if (InjectedFault(SystemCall::FullPath)) return std::nullopt;
  // Nearly every path fits into the small buffer; the large one is an allocation of 64 KiB.
  std::array<wchar_t, 1024> small;
  DWORD length = GetFullPathNameW(AsWide(path), small.size(), small.data(), nullptr);
  if (length == 0 || length > LongestFullPath) return std::nullopt;
  if (length < small.size()) return FromWide({small.data(), length});
  std::wstring large(LongestFullPath + 1, L'\0');
  length = GetFullPathNameW(AsWide(path), static_cast<DWORD>(large.size()), large.data(), nullptr);
  if (length == 0 || length > LongestFullPath) return std::nullopt;
  return FromWide({large.data(), length});
}

}  // namespace swr
