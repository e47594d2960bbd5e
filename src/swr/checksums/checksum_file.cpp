#include "swr/checksums/checksum_file.h"

#include <array>
#include <string>
#include <utility>

#include "swr/checksums/more_list_forms.h"
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

ChecksumLineReader::ChecksumLineReader(std::u16string_view path, ListForms forms)
    : hint_(AlgoFromChecksumFileName(path)), forms_(forms) {
  if (forms_ == ListForms::Usual) return;
  const std::optional<NamedByList> named = FileNamedByList(path);
  if (!named) return;
  if (!hint_) hint_ = named->algo;
  namedFile_ = named->name;
}

bool ChecksumLineReader::IsFrame(std::u16string_view line) {
  switch (part_) {
    case Part::Body:
      if (line == u"-----BEGIN PGP SIGNED MESSAGE-----") {
        part_ = Part::SignedHeader;
        isSigned_ = true;
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

bool ChecksumLineReader::ParseLine(std::u16string_view line, ChecksumLine& result) const {
  if (hint_ == AlgoId::Crc32 && ParseSfvLine(line, result)) return true;
  if (ParseTaggedLine(line, result) || ParsePlainLine(line, hint_, result)) return true;
  if (hint_ != AlgoId::Crc32 && ParseSfvLine(line, result)) return true;
  return forms_ == ListForms::Extended &&
         ParseExtendedLine(line, {.algo = hint_, .name = namedFile_}, result);
}

LineKind ChecksumLineReader::Read(std::u16string_view line, ChecksumLine& result) {
  ++number_;
  if (line.ends_with(u'\r')) line.remove_suffix(1);
  if (number_ == 1 && line.starts_with(u'\uFEFF')) line.remove_prefix(1);
  if (IsFrame(TrimText(line))) return LineKind::Nothing;
  if (line.starts_with(u"- ")) line.remove_prefix(2);  // the dash-escape of a signed text
  const size_t first = line.find_first_not_of(u" \t");
  if (first == line.npos) return LineKind::Nothing;
  line.remove_prefix(first);
  if (line.front() == u'#' || line.front() == u';') return LineKind::Nothing;
  if (!ParseLine(line, result)) return LineKind::Skipped;
  result.lineNumber = number_;
  return LineKind::Checksum;
}

std::optional<ChecksumLine> ChecksumTextReader::Next() {
  while (!rest_.empty()) {
    const size_t end = rest_.find(u'\n');
    const std::u16string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + 1);
    ChecksumLine parsed;
    switch (lines_.Read(line, parsed)) {
      case LineKind::Checksum:
        return parsed;
      case LineKind::Skipped:
        skippedLines_.push_back(lines_.LineNumber());
        break;
      case LineKind::Nothing:
        break;
    }
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
