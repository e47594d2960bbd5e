// Converts wide text to bytes, for records.
#pragma once

#include <cstring>
#include <string>
#include <string_view>

namespace kit {

inline std::string BytesOf(std::wstring_view text) {
  std::string bytes(text.size() * sizeof(wchar_t), '\0');
  std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}

inline std::wstring WideOf(std::string_view bytes) {
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  return text;
}

}  // namespace kit
