// Conversion between the program's UTF-16 text and the wide pointers of Windows calls.
//
// Cast only inside the argument list of a call: the two unit types may not alias, and only an
// opaque callee makes the compiler finish its stores first. The Windows targets are also built with
// -fno-strict-aliasing. Text that a call returns is written to a wchar_t buffer and copied from
// there; long text is written in place.
#pragma once

#include <string>
#include <string_view>

namespace swr {

static_assert(sizeof(wchar_t) == sizeof(char16_t) && alignof(wchar_t) == alignof(char16_t),
              "only for platforms whose wide characters are UTF-16 code units");

inline const wchar_t* AsWide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
// A view need not be null-terminated: only for calls that also take its length.
inline const wchar_t* AsWide(std::u16string_view text) { return AsWide(text.data()); }
inline const wchar_t* AsWide(const std::u16string& text) { return AsWide(text.c_str()); }

// For a call that writes at most text.size() units.
inline wchar_t* WideBuffer(std::u16string& text) { return reinterpret_cast<wchar_t*>(text.data()); }

inline std::u16string FromWide(std::wstring_view text) {
  return std::u16string(text.begin(), text.end());
}

}  // namespace swr
