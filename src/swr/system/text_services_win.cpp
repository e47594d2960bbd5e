#include "swr/system/text_services.h"

#include "swr/system/windows_api_win.h"

#include <shlwapi.h>

#include "swr/system/handles_win.h"
#include "swr/system/system_library_win.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

// The calls below take lengths as int. Longer text does not occur: the largest file read as text
// has 64 MiB.
int AsInt(size_t length) { return static_cast<int>(length); }

std::u16string Decode(UINT codePage, std::string_view bytes) {
  if (bytes.empty()) return {};
  const int length =
      MultiByteToWideChar(codePage, 0, bytes.data(), AsInt(bytes.size()), nullptr, 0);
  // Filled in place, to avoid a copy of what may be a large checksum file.
  std::u16string text(static_cast<size_t>(length), u'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), AsInt(bytes.size()), WideBuffer(text), length);
  return text;
}

}  // namespace

// The Windows API has no function for the table of CompareStringOrdinal, but ntdll has.
char16_t SystemUpperUnit(char16_t unit) {
  static WCHAR(WINAPI* const upcase)(WCHAR) =
      FindLoadedFunction(L"ntdll.dll", "RtlUpcaseUnicodeChar");
  return static_cast<char16_t>(upcase(static_cast<WCHAR>(unit)));
}

bool SystemEqualsNoCase(std::u16string_view a, std::u16string_view b) {
  return CompareStringOrdinal(AsWide(a), AsInt(a.size()), AsWide(b), AsInt(b.size()), TRUE) ==
         CSTR_EQUAL;
}

int SystemCompareNatural(const std::u16string& a, const std::u16string& b) {
  return SystemCompareNaturalTexts(a.c_str(), b.c_str());
}

int SystemCompareNaturalTexts(const char16_t* a, const char16_t* b) {
  return StrCmpLogicalW(AsWide(a), AsWide(b));
}

// The order depends on the user's language.
const bool NaturalKeysAreExact = false;

// Windows offers no sort keys for this order.
std::u16string SystemNaturalKey(std::u16string text) { return text; }

int SystemCompareNaturalKeys(const std::u16string& a, const std::u16string& b) {
  return SystemCompareNatural(a, b);
}

bool SystemMatchesPattern(const std::u16string& name, const std::u16string& patterns) {
  return PathMatchSpecW(AsWide(name), AsWide(patterns)) != FALSE;
}

bool SystemIsValidUtf8(std::string_view bytes) {
  return bytes.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                              AsInt(bytes.size()), nullptr, 0) >= 1;
}

std::u16string SystemDecodeUtf8(std::string_view bytes) { return Decode(CP_UTF8, bytes); }

std::string SystemEncodeUtf8(std::u16string_view text) {
  if (text.empty()) return {};
  const int length = WideCharToMultiByte(CP_UTF8, 0, AsWide(text), AsInt(text.size()), nullptr, 0,
                                         nullptr, nullptr);
  std::string bytes(static_cast<size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, AsWide(text), AsInt(text.size()), bytes.data(), length, nullptr,
                      nullptr);
  return bytes;
}

std::u16string SystemDecodeAnsi(std::string_view bytes) { return Decode(CP_ACP, bytes); }

std::u16string SystemErrorText(uint32_t error) {
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  const LocalMemory<wchar_t> memory(buffer);
  if (length == 0 || !memory) return {};
  return FromWide({memory.Get(), length});
}

}  // namespace swr
