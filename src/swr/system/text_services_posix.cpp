#include "swr/system/text_services.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "swr/system/errno_posix.h"
#include "swr/system/error_codes.h"
#include "swr/system/natural_key.h"

namespace swr {
namespace {

constexpr char16_t Replacement = 0xFFFD;

constexpr bool IsContinuation(char byte) { return (static_cast<uint8_t>(byte) & 0xC0) == 0x80; }
constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Whether `name` matches one pattern of "*" and "?", ignoring case. Backtracks to the last star
// only.
bool MatchesOnePattern(std::u16string_view name, std::u16string_view pattern) {
  size_t n = 0;
  size_t p = 0;
  size_t star = pattern.npos;
  size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      starName = n;
    } else if (p < pattern.size() &&
               (pattern[p] == u'?' ||
                SystemEqualsNoCase(name.substr(n, 1), pattern.substr(p, 1)))) {
      ++n;
      ++p;
    } else if (star != pattern.npos) {
      p = star + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'*') ++p;
  return p == pattern.size();
}

// One step through text that claims to be UTF-8.
struct Utf8Step {
  char32_t codePoint = Replacement;
  size_t length = 1;  // bytes; of an invalid sequence, those that could have begun a valid one
  bool isValid = false;
};

// The Unicode Standard, table 3-7: the range of the second byte depends on the first.
Utf8Step DecodeStep(std::string_view bytes) {
  const auto lead = static_cast<uint8_t>(bytes[0]);
  if (lead < 0x80) return {lead, 1, true};
  if (lead < 0xC2 || lead > 0xF4) return {};
  const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  const uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (bytes.size() < 2) return {};
  const auto second = static_cast<uint8_t>(bytes[1]);
  if (second < lowest || second > highest) return {};
  char32_t codePoint = ((lead & (0xFFu >> (length + 1))) << 6) | (second & 0x3F);
  for (size_t i = 2; i < length; ++i) {
    if (i == bytes.size() || !IsContinuation(bytes[i])) return {.length = i};
    codePoint = (codePoint << 6) | (static_cast<uint8_t>(bytes[i]) & 0x3F);
  }
  return {codePoint, length, true};
}

void AppendUtf16(std::u16string& text, char32_t codePoint) {
  if (codePoint >= 0x10000) {
    text.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
    codePoint = 0xDC00 + ((codePoint - 0x10000) & 0x3FF);
  }
  text.push_back(static_cast<char16_t>(codePoint));
}

void AppendUtf8(std::string& bytes, char32_t codePoint) {
  const auto append = [&](char32_t value) { bytes.push_back(static_cast<char>(value)); };
  if (codePoint < 0x80) {
    append(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
  } else if (codePoint < 0x10000) {
    append(0xE0 | (codePoint >> 12));
    append(0x80 | ((codePoint >> 6) & 0x3F));
  } else {
    append(0xF0 | (codePoint >> 18));
    append(0x80 | ((codePoint >> 12) & 0x3F));
    append(0x80 | ((codePoint >> 6) & 0x3F));
  }
  append(0x80 | (codePoint & 0x3F));
}

// windows-1252 where it differs from Latin-1, from 0x80. The five unassigned bytes become the
// control characters with the same code, as on Windows.
constexpr std::array<char16_t, 32> westernPunctuation = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

char16_t SystemUpperUnit(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
  // Not the user's locale, whose case mapping may differ.
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) return unit;
  const wint_t upper = towupper_l(unit, unicode);
  return upper <= 0xFFFF ? static_cast<char16_t>(upper) : unit;
}

bool SystemEqualsNoCase(std::u16string_view a, std::u16string_view b) {
  // Unit by unit, as the Windows call does it: a letter whose upper-case form has more units equals
  // only itself.
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && SystemUpperUnit(a[i]) != SystemUpperUnit(b[i])) return false;
  }
  return true;
}

int SystemCompareNatural(const std::u16string& a, const std::u16string& b) {
  return SystemNaturalKey(a).compare(SystemNaturalKey(b));
}

int SystemCompareNaturalTexts(const char16_t* a, const char16_t* b) {
  return SystemCompareNatural(a, b);
}

const bool NaturalKeysAreExact = true;

std::u16string SystemNaturalKey(std::u16string text) {
  std::string buffer;
  std::u16string key;
  for (const char byte : MakeNaturalKey(text, buffer)) key += static_cast<uint8_t>(byte);
  return key;
}

int SystemCompareNaturalKeys(const std::u16string& a, const std::u16string& b) {
  return a.compare(b);
}

bool SystemMatchesPattern(const std::u16string& name, const std::u16string& patterns) {
  std::u16string_view rest = patterns;
  while (!rest.empty()) {
    const size_t end = rest.find(u';');
    std::u16string_view pattern = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    while (!pattern.empty() && pattern.front() == u' ') pattern.remove_prefix(1);
    if (pattern.empty()) continue;
    if (pattern == u"*.*" || MatchesOnePattern(name, pattern)) return true;
  }
  return false;
}

bool SystemIsValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Utf8Step step = DecodeStep(bytes);
    if (!step.isValid) return false;
    bytes.remove_prefix(step.length);
  }
  return true;
}

std::u16string SystemDecodeUtf8(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Utf8Step step = DecodeStep(bytes);
    AppendUtf16(text, step.codePoint);
    bytes.remove_prefix(step.length);
  }
  return text;
}

std::string SystemEncodeUtf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      ++i;
      AppendUtf8(bytes, 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (text[i] - 0xDC00));
    } else {
      AppendUtf8(bytes, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? Replacement : unit);
    }
  }
  return bytes;
}

std::u16string SystemDecodeAnsi(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<uint8_t>(byte);
    text.push_back(value >= 0x80 && value < 0xA0 ? westernPunctuation[value - 0x80] : value);
  }
  return text;
}

std::u16string SystemErrorText(uint32_t error) {
  // The errno values that ErrorFromErrno distinguishes; their messages are the system's.
  constexpr int known[] = {ENOENT, ENOTDIR, EACCES, EISDIR, EMFILE,       EBADF, ENOMEM, ENXIO,
                           EBUSY,  ESTALE,  EPIPE,  ENOSPC, ENAMETOOLONG, EFBIG, ELOOP,  EIO};
  for (const int value : known) {
    if (ErrorFromErrno(value) == error) return SystemDecodeUtf8(strerror(value));
  }
  if (error == ErrorNotSupported) return SystemDecodeUtf8(strerror(ENOTSUP));
  return {};
}

}  // namespace swr
