#include "swr/system/text_services.h"

#include <unicode/coll.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "swr/system/errno_posix.h"
#include "swr/system/error_codes.h"

namespace swr {
namespace {

int32_t AsInt32(size_t length) { return static_cast<int32_t>(length); }

// One for each thread: a collator may not be used by two at once.
const icu::Collator& NaturalOrder() {
  thread_local const std::unique_ptr<icu::Collator> collator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> made(
        icu::Collator::createInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) throw std::runtime_error("no text ordering available");
    made->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    made->setAttribute(UCOL_STRENGTH, UCOL_SECONDARY, status);  // accents count, case does not
    return made;
  }();
  return *collator;
}

// Whether `name` fits one pattern of "*" and "?", without case: the classic walk that goes back to
// the last star.
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

struct ConverterCloser {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};

std::u16string Decode(const char* encoding, std::string_view bytes) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, ConverterCloser> converter(ucnv_open(encoding, &status));
  if (U_FAILURE(status)) throw std::runtime_error("no text conversion available");
  std::u16string text(bytes.size() + 1, u'\0');  // no byte makes more than one unit
  const int32_t length = ucnv_toUChars(converter.get(), text.data(), AsInt32(text.size()),
                                       bytes.data(), AsInt32(bytes.size()), &status);
  text.resize(static_cast<size_t>(length));
  return text;
}

}  // namespace

char16_t SystemUpperUnit(char16_t unit) { return static_cast<char16_t>(u_toupper(unit)); }

bool SystemEqualsNoCase(std::u16string_view a, std::u16string_view b) {
  // Unit by unit, as the Windows call does it: a letter whose capital takes more units equals only
  // itself.
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && SystemUpperUnit(a[i]) != SystemUpperUnit(b[i])) return false;
  }
  return true;
}

int SystemCompareNatural(const std::u16string& a, const std::u16string& b) {
  UErrorCode status = U_ZERO_ERROR;
  return NaturalOrder().compare(a.data(), AsInt32(a.size()), b.data(), AsInt32(b.size()), status);
}

std::u16string SystemNaturalKey(std::u16string text) {
  const icu::UnicodeString whole(false, text.data(), AsInt32(text.size()));
  std::array<uint8_t, 256> bytes;
  int32_t size = NaturalOrder().getSortKey(whole, bytes.data(), AsInt32(bytes.size()));
  if (static_cast<size_t>(size) <= bytes.size()) return {bytes.begin(), bytes.begin() + size};
  std::vector<uint8_t> all(static_cast<size_t>(size));
  size = NaturalOrder().getSortKey(whole, all.data(), size);
  return {all.begin(), all.begin() + size};
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
  UErrorCode status = U_ZERO_ERROR;
  int32_t length = 0;
  u_strFromUTF8(nullptr, 0, &length, bytes.data(), AsInt32(bytes.size()), &status);
  return status == U_BUFFER_OVERFLOW_ERROR || U_SUCCESS(status);
}

std::u16string SystemDecodeUtf8(std::string_view bytes) { return Decode("UTF-8", bytes); }

std::string SystemEncodeUtf8(std::u16string_view text) {
  std::string bytes;
  icu::UnicodeString(false, text.data(), AsInt32(text.size())).toUTF8String(bytes);
  return bytes;
}

std::u16string SystemDecodeAnsi(std::string_view bytes) { return Decode("windows-1252", bytes); }

std::u16string SystemErrorText(uint32_t error) {
  // The errno values that ErrorFromErrno tells apart; their words are the system's.
  constexpr int known[] = {ENOENT, ENOTDIR, EACCES, EISDIR, EMFILE,       EBADF, ENOMEM, ENXIO,
                           EBUSY,  ESTALE,  EPIPE,  ENOSPC, ENAMETOOLONG, EFBIG, ELOOP,  EIO};
  for (const int value : known) {
    if (ErrorFromErrno(value) == error) return SystemDecodeUtf8(strerror(value));
  }
  if (error == ErrorNotSupported) return SystemDecodeUtf8(strerror(ENOTSUP));
  return {};
}

}  // namespace swr
