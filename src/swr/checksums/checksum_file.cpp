#include "swr/checksums/checksum_file.h"

#include <array>
#include <string>
#include <utility>

#include "swr/paths/path_forms.h"
#include "swr/text/text.h"

namespace swr {
namespace {

struct NameEnding {
  std::u16string_view ending;
  AlgoId algo;
};

constexpr std::array<NameEnding, 17> nameEndings = {{
    {u".md5", AlgoId::Md5},
    {u".sha1", AlgoId::Sha1},
    {u".sha256", AlgoId::Sha256},
    {u".sha384", AlgoId::Sha384},
    {u".sha512", AlgoId::Sha512},
    {u".sha3-256", AlgoId::Sha3_256},
    {u".sha3-384", AlgoId::Sha3_384},
    {u".sha3-512", AlgoId::Sha3_512},
    {u".b3", AlgoId::Blake3},
    {u".blake3", AlgoId::Blake3},
    {u".sfv", AlgoId::Crc32},
    {u".crc32", AlgoId::Crc32},
    {u".xxh64", AlgoId::Xxh64},
    {u".xxh3", AlgoId::Xxh3_64},
    {u".xxh128", AlgoId::Xxh128},
    {u".md4", AlgoId::Md4},
    {u".md2", AlgoId::Md2},
}};

// Tells the frame and the signature of a clear-signed text from its body. The signature itself is
// not checked.
class ClearSignature {
 public:
  // True for a line that belongs to the frame or the signature.
  bool Takes(std::u16string_view line) {
    switch (state_) {
      case State::Body:
        if (line == u"-----BEGIN PGP SIGNED MESSAGE-----") {
          state_ = State::Header;
          return true;
        }
        if (line == u"-----BEGIN PGP SIGNATURE-----") {
          state_ = State::Signature;
          return true;
        }
        return false;
      case State::Header:
        if (line.empty()) state_ = State::Body;
        return true;
      case State::Signature:
        if (line == u"-----END PGP SIGNATURE-----") state_ = State::Body;
        return true;
    }
    return false;
  }

 private:
  enum class State : uint8_t { Body, Header, Signature };
  State state_ = State::Body;
};

bool ParseLine(std::u16string_view line, std::optional<AlgoId> hint, ChecksumLine& result) {
  if (hint == AlgoId::Crc32) {
    return ParseSfvLine(line, result) || ParseTaggedLine(line, result) ||
           ParsePlainLine(line, hint, result);
  }
  return ParseTaggedLine(line, result) || ParsePlainLine(line, hint, result) ||
         ParseSfvLine(line, result);
}

}  // namespace

std::optional<AlgoId> AlgoFromChecksumFileName(std::u16string_view path) {
  const std::u16string lower = ToLowerText(SplitPath(path).name);
  std::u16string_view name = lower;
  for (const std::u16string_view suffix : {u".txt", u".asc", u".sig"}) {
    if (!EndsWithNoCase(name, suffix)) continue;
    name.remove_suffix(suffix.size());
    break;
  }
  for (const NameEnding& known : nameEndings) {
    if (EndsWithNoCase(name, known.ending)) return known.algo;
  }
  for (const std::u16string_view ending : {u"sums", u"sum"}) {
    if (!EndsWithNoCase(name, ending)) continue;
    if (const auto algo = ParseAlgoName(name.substr(0, name.size() - ending.size()))) return algo;
  }
  return std::nullopt;
}

bool IsChecksumFileName(std::u16string_view path) {
  if (AlgoFromChecksumFileName(path)) return true;
  const std::u16string name = ToLowerText(SplitPath(path).name);
  for (const std::u16string_view known :
       {u"checksums", u"checksum", u"checksums.txt", u"checksum.txt", u"digests"}) {
    if (name == known) return true;
  }
  return EndsWithNoCase(name, u".digests") || EndsWithNoCase(name, u".checksums");
}

ChecksumSet ParseChecksumText(std::u16string_view text, std::u16string_view path) {
  const std::optional<AlgoId> hint = AlgoFromChecksumFileName(path);
  ChecksumSet set;
  ClearSignature signature;
  for (uint32_t number = 1; !text.empty(); ++number) {
    const size_t end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    if (number == 1 && line.starts_with(u'\uFEFF')) line.remove_prefix(1);
    if (signature.Takes(TrimText(line))) continue;
    if (line.starts_with(u"- ")) line.remove_prefix(2);  // the dash-escape of a signed text
    const size_t first = line.find_first_not_of(u" \t");
    if (first == line.npos) continue;
    line.remove_prefix(first);
    if (line.front() == u'#' || line.front() == u';') continue;
    ChecksumLine parsed;
    if (ParseLine(line, hint, parsed)) {
      parsed.lineNumber = number;
      set.lines.push_back(std::move(parsed));
    } else {
      set.skippedLines.push_back(number);
    }
  }
  return set;
}

}  // namespace swr
