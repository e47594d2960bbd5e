#include "swr/text/encoding.h"

#include <algorithm>
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

}  // namespace

std::u16string Utf8ToWide(std::string_view bytes) { return SystemDecodeUtf8(bytes); }

std::string WideToUtf8(std::u16string_view text) { return SystemEncodeUtf8(text); }

std::u16string DecodeTextBytes(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return Utf8ToWide(bytes.substr(3));
  if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(bytes.substr(2), ByteOrder::LowFirst);
  if (bytes.starts_with("\xFE\xFF")) return DecodeUtf16(bytes.substr(2), ByteOrder::HighFirst);
  if (IsAscii(bytes)) return {bytes.begin(), bytes.end()};
  return SystemIsValidUtf8(bytes) ? Utf8ToWide(bytes) : SystemDecodeAnsi(bytes);
}

}  // namespace swr
