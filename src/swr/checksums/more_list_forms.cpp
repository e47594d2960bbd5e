#include "swr/checksums/more_list_forms.h"

#include <utility>
#include <vector>

#include "swr/checksums/digest_decoders.h"
#include "swr/paths/path_forms.h"
#include "swr/text/text.h"

namespace swr {
namespace {

using Bytes = std::optional<std::vector<uint8_t>>;

bool Fill(ChecksumLine& result, std::u16string name, std::vector<uint8_t> digest,
          std::vector<AlgoId> candidates) {
  if (name.empty() || candidates.empty()) return false;
  result.name = std::move(name);
  result.digest = std::move(digest);
  result.candidates = std::move(candidates);
  return true;
}

// The hint if the digest has its length, otherwise all algorithms of that length.
std::vector<AlgoId> CandidatesFor(const std::vector<uint8_t>& digest, std::optional<AlgoId> hint) {
  if (hint && GetAlgo(*hint).digestSize == digest.size()) return {*hint};
  return AlgosForDigestSize(digest.size());
}

// "SHA2-256(name)= hex". openssl does not escape names.
bool ParseOpensslLine(std::u16string_view line, ChecksumLine& result) {
  const size_t open = line.find(u'(');
  const size_t close = line.rfind(u")= ");
  if (open == line.npos || close == line.npos || close <= open) return false;
  const std::optional<AlgoId> algo = ParseAlgoName(line.substr(0, open));
  if (!algo) return false;
  Bytes digest = DecodeHexStrict(TrimText(line.substr(close + 3)));
  if (!digest || digest->size() != GetAlgo(*algo).digestSize) return false;
  return Fill(result, std::u16string(line.substr(open + 1, close - open - 1)), *std::move(digest),
              {*algo});
}

// "hex<tab>name"; the name may have the "*" of a binary file in front.
bool ParseTabLine(std::u16string_view line, std::optional<AlgoId> hint, ChecksumLine& result) {
  const bool isEscaped = line.starts_with(u'\\');
  if (isEscaped) line.remove_prefix(1);
  const size_t tab = line.find(u'\t');
  if (tab == line.npos) return false;
  Bytes digest = DecodeHexStrict(line.substr(0, tab));
  if (!digest) return false;
  std::u16string_view name = line.substr(tab + 1);
  if (name.starts_with(u'*')) name.remove_prefix(1);
  std::vector<AlgoId> candidates = CandidatesFor(*digest, hint);
  return Fill(result, isEscaped ? UnescapeName(name) : std::u16string(name), *std::move(digest),
              std::move(candidates));
}

// "SHA256 (name) = base64".
bool ParseTaggedBase64Line(std::u16string_view line, ChecksumLine& result) {
  const bool isEscaped = line.starts_with(u'\\');
  if (isEscaped) line.remove_prefix(1);
  const size_t open = line.find(u" (");
  const size_t close = line.rfind(u") = ");
  if (open == line.npos || close == line.npos || close < open + 2) return false;
  const std::optional<AlgoId> algo = ParseAlgoName(line.substr(0, open));
  if (!algo) return false;
  Bytes digest = DecodeBase64(line.substr(close + 4));
  if (!digest || digest->size() != GetAlgo(*algo).digestSize) return false;
  const std::u16string_view name = line.substr(open + 2, close - open - 2);
  return Fill(result, isEscaped ? UnescapeName(name) : std::u16string(name), *std::move(digest),
              {*algo});
}

bool ParseBareDigest(std::u16string_view line, const NamedByList& named, ChecksumLine& result) {
  Bytes digest = DecodeHexStrict(TrimText(line));
  if (!digest) return false;
  std::vector<AlgoId> candidates = CandidatesFor(*digest, named.algo);
  return Fill(result, named.name, *std::move(digest), std::move(candidates));
}

}  // namespace

std::optional<NamedByList> FileNamedByList(std::u16string_view listPath) {
  std::u16string_view name = SplitPath(listPath).name;
  for (const std::u16string_view suffix : {u".txt", u".asc", u".sig"}) {
    if (!EndsWithNoCase(name, suffix)) continue;
    name.remove_suffix(suffix.size());
    break;
  }
  const size_t stop = name.rfind(u'.');
  if (stop == name.npos || stop == 0) return std::nullopt;
  std::u16string_view ending = name.substr(stop + 1);
  for (const std::u16string_view sum : {u"sums", u"sum"}) {
    if (!EndsWithNoCase(ending, sum)) continue;
    ending.remove_suffix(sum.size());
    break;
  }
  const std::optional<AlgoId> algo =
      EqualsNoCase(ending, u"sfv") ? AlgoId::Crc32 : ParseAlgoName(ending);
  if (!algo) return std::nullopt;
  return NamedByList{.algo = algo, .name = std::u16string(name.substr(0, stop))};
}

bool ParseExtendedLine(std::u16string_view line, const NamedByList& named, ChecksumLine& result) {
  return ParseOpensslLine(line, result) || ParseTabLine(line, named.algo, result) ||
         ParseTaggedBase64Line(line, result) || ParseBareDigest(line, named, result);
}

}  // namespace swr
