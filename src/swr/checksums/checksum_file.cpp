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

bool ChecksumTextReader::IsFrame(std::u16string_view line) {
  switch (part_) {
    case Part::Body:
      if (line == u"-----BEGIN PGP SIGNED MESSAGE-----") {
        part_ = Part::SignedHeader;
        return true;
      }
      if (line == u"-----BEGIN PGP SIGNATURE-----") {
        part_ = Part::Signature;
        return true;
      }
      return false;
    case Part::SignedHeader:
      if (line.empty()) part_ = Part::Body;
      return true;
    case Part::Signature:
      if (line == u"-----END PGP SIGNATURE-----") part_ = Part::Body;
      return true;
  }
  return false;
}

std::optional<ChecksumLine> ChecksumTextReader::Next() {
  while (!rest_.empty()) {
    ++number_;
    const size_t end = rest_.find(u'\n');
    std::u16string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + 1);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    if (number_ == 1 && line.starts_with(u'\uFEFF')) line.remove_prefix(1);
    if (IsFrame(TrimText(line))) continue;
    if (line.starts_with(u"- ")) line.remove_prefix(2);  // dash-escape of a clear-signed text
    const size_t first = line.find_first_not_of(u" \t");
    if (first == line.npos) continue;
    line.remove_prefix(first);
    if (line.front() == u'#' || line.front() == u';') continue;
    ChecksumLine parsed;
    if (ParseLine(line, hint_, parsed)) {
      parsed.lineNumber = number_;
      return parsed;
    }
    skippedLines_.push_back(number_);
  }
  return std::nullopt;
}

ChecksumSet ParseChecksumText(std::u16string_view text, std::u16string_view path) {
  ChecksumTextReader reader(text, path);
  ChecksumSet set;
  while (auto line = reader.Next()) set.lines.push_back(*std::move(line));
  set.skippedLines = reader.SkippedLines();
  return set;
}

}  // namespace swr
