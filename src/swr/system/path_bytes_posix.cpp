#include "swr/system/path_bytes_posix.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace swr {
namespace {

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool IsEscapedByte(char32_t unit) { return unit >= 0xDC80 && unit <= 0xDCFF; }
constexpr bool IsContinuation(uint8_t byte) { return (byte & 0xC0) == 0x80; }

struct Decoded {
  char32_t codePoint = 0;
  size_t length = 0;  // bytes; 0 if the sequence is invalid
};

// The sequence at the start of `bytes`; surrogates encoded in three bytes are valid here.
Decoded DecodeSequence(std::string_view bytes) {
  const auto at = [&](size_t i) { return static_cast<uint8_t>(bytes[i]); };
  const uint8_t lead = at(0);
  if (lead < 0x80) return {lead, 1};
  const size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                        : lead >= 0xE0 && lead <= 0xEF ? 3
                        : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                       : 0;
  if (length == 0 || bytes.size() < length) return {};
  char32_t codePoint = lead & (0xFF >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    if (!IsContinuation(at(i))) return {};
    codePoint = (codePoint << 6) | (at(i) & 0x3F);
  }
  constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
  if (codePoint < smallest[length] || codePoint > 0x10FFFF) return {};
  return {codePoint, length};
}

// Whether the bytes begin with an ordinary character. The text of an encoded surrogate or of an
// invalid byte could begin with a low surrogate.
bool StartsWithCharacter(std::string_view bytes) {
  const Decoded decoded = DecodeSequence(bytes);
  return decoded.length != 0 && !IsHighSurrogate(decoded.codePoint) &&
         !IsLowSurrogate(decoded.codePoint);
}

void AppendBytes(std::string& bytes, char32_t codePoint) {
  const auto append = [&](char32_t value) { bytes.push_back(static_cast<char>(value)); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
    append(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    append(0xE0 | (codePoint >> 12));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xF0 | (codePoint >> 18));
    append(0x80 | ((codePoint >> 12) & 0x3F));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

// How many characters at the start are ASCII. Usually all of them are, and they need no decoding.
template <typename Text>
size_t AsciiLength(Text text) {
  const auto isAscii = [](auto c) { return static_cast<char32_t>(c) < 0x80; };
  return static_cast<size_t>(std::ranges::find_if_not(text, isAscii) - text.begin());
}

}  // namespace

std::u16string PathTextFromBytes(std::string_view bytes) {
  const size_t ascii = AsciiLength(bytes);
  std::u16string text(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(ascii));
  bytes.remove_prefix(ascii);
  text.reserve(ascii + bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = DecodeSequence(bytes);
    const char32_t c = decoded.codePoint;
    // A low surrogate after a high one would form a pair and convert back to four bytes.
    const bool mayPair = IsHighSurrogate(c) && bytes.size() > decoded.length &&
                         !StartsWithCharacter(bytes.substr(decoded.length));
    if (decoded.length == 0 || IsEscapedByte(c) || mayPair) {
      text.push_back(static_cast<char16_t>(0xDC00 + static_cast<uint8_t>(bytes[0])));
      bytes.remove_prefix(1);
      continue;
    }
    if (c >= 0x10000) {
      text.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      text.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
      text.push_back(static_cast<char16_t>(c));
    }
    bytes.remove_prefix(decoded.length);
  }
  return text;
}

std::string PathBytesFromText(std::u16string_view text) {
  const size_t ascii = AsciiLength(text);
  std::string bytes(ascii, '\0');
  std::ranges::transform(text.substr(0, ascii), bytes.begin(),
                         [](char16_t unit) { return static_cast<char>(unit); });
  for (size_t i = ascii; i < text.size(); ++i) {
    const char32_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      AppendBytes(bytes, 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00));
      ++i;
    } else if (IsEscapedByte(unit)) {
      bytes.push_back(static_cast<char>(unit - 0xDC00));
    } else {
      AppendBytes(bytes, unit);
    }
  }
  return bytes;
}

}  // namespace swr
