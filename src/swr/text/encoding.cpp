#include "swr/text/encoding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "swr/system/text_services.h"

namespace swr {
namespace {

enum class ByteOrder : uint8_t { LowFirst, HighFirst };

// Surrogates are copied without validation.
std::u16string DecodeUtf16(std::string_view bytes, ByteOrder order) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<uint8_t>(bytes[i]);
    const auto second = static_cast<uint8_t>(bytes[i + 1]);
    text.push_back(static_cast<char16_t>(order == ByteOrder::LowFirst ? first | (second << 8)
                                                                      : (first << 8) | second));
  }
  return text;
}

// Most checksum files are ASCII and need no converter.
bool IsAscii(std::string_view bytes) {
  return std::ranges::none_of(bytes, [](char byte) { return (byte & 0x80) != 0; });
}

bool IsAscii(std::u16string_view text) {
  char32_t all = 0;
  for (const char16_t unit : text) all |= unit;
  return all < 0x80;
}

}  // namespace

std::u16string Utf8ToWide(std::string_view bytes) { return SystemDecodeUtf8(bytes); }

std::string WideToUtf8(std::u16string_view text) { return SystemEncodeUtf8(text); }

void AppendUtf8(std::u16string_view text, std::string& bytes) {
  // Most names are ASCII and need no converter.
  if (!IsAscii(text)) {
    bytes += SystemEncodeUtf8(text);
    return;
  }
  const size_t start = bytes.size();
  bytes.resize(start + text.size());
  std::ranges::transform(text, bytes.begin() + static_cast<ptrdiff_t>(start),
                         [](char16_t unit) { return static_cast<char>(unit); });
}

std::u16string DecodeTextBytes(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return Utf8ToWide(bytes.substr(3));
  if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(bytes.substr(2), ByteOrder::LowFirst);
  if (bytes.starts_with("\xFE\xFF")) return DecodeUtf16(bytes.substr(2), ByteOrder::HighFirst);
  if (IsAscii(bytes)) return {bytes.begin(), bytes.end()};
  return SystemIsValidUtf8(bytes) ? Utf8ToWide(bytes) : SystemDecodeAnsi(bytes);
}

}  // namespace swr
