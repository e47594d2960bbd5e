#include "swr/checksums/pasted_hash.h"

#include <array>
#include <utility>

#include "swr/checksums/digest_decoders.h"
#include "swr/checksums/xxh3_prefix.h"
#include "swr/text/text.h"

namespace swr {
namespace {

constexpr size_t LongestLine = 4096;
constexpr size_t LongestClipboardText = 300;
constexpr size_t ShortestClipboardDigest = 16;

using Bytes = std::optional<std::vector<uint8_t>>;

// Nothing if the digest has the length of no algorithm, or not of the one that the text names.
std::optional<ParsedHash> MakeParsedHash(std::vector<uint8_t> digest, std::optional<AlgoId> hint,
                                         std::u16string_view name) {
  ParsedHash hash;
  if (hint) {
    if (digest.size() != GetAlgo(*hint).digestSize) return std::nullopt;
    hash.candidates = {*hint};
    hash.explicitAlgo = true;
  } else {
    hash.candidates = AlgosForDigestSize(digest.size());
    if (hash.candidates.empty()) return std::nullopt;
  }
  hash.digest = std::move(digest);
  hash.name = name;
  return hash;
}

// "SHA256 (name) = hex". Names are not unescaped here.
std::optional<ParsedHash> ParseTagged(std::u16string_view line) {
  if (line.starts_with(u'\\')) line.remove_prefix(1);
  const size_t open = line.find(u" (");
  const size_t close = line.rfind(u") = ");
  if (open == line.npos || close == line.npos || close < open + 2) return std::nullopt;
  const std::optional<AlgoId> algo = ParseAlgoName(line.substr(0, open));
  if (!algo) return std::nullopt;
  Bytes digest = DecodeHexStrict(TrimText(line.substr(close + 4)));
  if (!digest) return std::nullopt;
  return MakeParsedHash(*std::move(digest), algo, line.substr(open + 2, close - open - 2));
}

// "sha256-base64": the form of integrity attributes (W3C Subresource Integrity).
std::optional<ParsedHash> ParseIntegrity(std::u16string_view line) {
  const size_t hyphen = line.find(u'-');
  if (hyphen == line.npos) return std::nullopt;
  const std::u16string_view prefix = line.substr(0, hyphen);
  std::optional<AlgoId> algo;
  if (EqualsNoCase(prefix, u"sha256")) algo = AlgoId::Sha256;
  if (EqualsNoCase(prefix, u"sha384")) algo = AlgoId::Sha384;
  if (EqualsNoCase(prefix, u"sha512")) algo = AlgoId::Sha512;
  if (!algo) return std::nullopt;
  Bytes digest = DecodeBase64(line.substr(hyphen + 1));
  if (!digest) return std::nullopt;
  return MakeParsedHash(*std::move(digest), algo, {});
}

// "SHA-256 checksum: value". Returns the algorithm and reduces `text` to the value.
std::optional<AlgoId> TakeLabel(std::u16string_view& text) {
  const size_t end = text.find_first_of(u" \t:=");
  if (end == text.npos) return std::nullopt;
  const std::optional<AlgoId> algo = ParseAlgoName(text.substr(0, end));
  if (!algo) return std::nullopt;
  std::u16string_view rest = TrimText(text.substr(end));
  constexpr std::array<std::u16string_view, 6> labels = {u"hash",   u"checksum", u"sum",
                                                         u"digest", u"value",    u"fingerprint"};
  for (const std::u16string_view label : labels) {
    if (rest.size() > label.size() && EqualsNoCase(rest.substr(0, label.size()), label) &&
        std::u16string_view(u" :=").find(rest[label.size()]) != rest.npos) {
      rest = TrimText(rest.substr(label.size()));
      break;
    }
  }
  if (rest.starts_with(u':') || rest.starts_with(u'=')) rest = TrimText(rest.substr(1));
  if (rest.empty()) return std::nullopt;
  text = rest;
  return algo;
}

// "hex  name". Returns whether the text has this form, and then sets `result`, to nothing if the
// digest does not fit the algorithm.
bool ParseListLine(std::u16string_view text, std::optional<AlgoId> hint,
                   std::optional<ParsedHash>& result) {
  const size_t space = text.find(u' ');
  std::u16string_view token = text.substr(0, space);
  std::u16string_view name;
  if (space != text.npos) {
    name = text.substr(space + 1);
    if (name.starts_with(u' ') || name.starts_with(u'*')) name.remove_prefix(1);
  }
  if (TakeXxh3Prefix(token)) hint = AlgoId::Xxh3_64;
  Bytes digest = DecodeHexStrict(token);
  if (!digest || !IsDigestSizeKnown(digest->size())) return false;
  result = MakeParsedHash(*std::move(digest), hint, TrimText(name));
  return true;
}

std::u16string_view FirstLine(std::u16string_view text) {
  while (!text.empty()) {
    const size_t end = text.find(u'\n');
    const std::u16string_view line = TrimText(text.substr(0, end));
    if (!line.empty() || end == text.npos) return line;
    text.remove_prefix(end + 1);
  }
  return {};
}

std::optional<ParsedHash> ParseHashText(std::u16string_view text, bool strict) {
  const std::u16string_view line = FirstLine(text);
  if (line.empty() || line.size() > LongestLine) return std::nullopt;
  if (auto hash = ParseTagged(line)) return hash;
  if (auto hash = ParseIntegrity(line)) return hash;
  std::u16string_view rest = line;
  const std::optional<AlgoId> hint = TakeLabel(rest);
  Bytes digest = DecodeHexLoose(rest, strict ? HyphenRule::Reject : HyphenRule::Ignore);
  if (digest && IsDigestSizeKnown(digest->size())) {
    return MakeParsedHash(*std::move(digest), hint, {});
  }
  std::optional<ParsedHash> result;
  if (ParseListLine(rest, hint, result)) return result;
  if (strict && !hint) return std::nullopt;
  digest = DecodeBase64(rest);
  if (!digest || !IsDigestSizeKnown(digest->size())) return std::nullopt;
  return MakeParsedHash(*std::move(digest), hint, {});
}

}  // namespace

std::optional<ParsedHash> ParseExpectedHash(std::u16string_view text) {
  return ParseHashText(text, false);
}

std::optional<ParsedHash> ParseClipboardHash(std::u16string_view text) {
  text = TrimText(text);
  if (text.empty() || text.size() > LongestClipboardText || text.find(u'\n') != text.npos) {
    return std::nullopt;
  }
  std::optional<ParsedHash> hash = ParseHashText(text, true);
  if (hash && hash->digest.size() < ShortestClipboardDigest) return std::nullopt;
  return hash;
}

}  // namespace swr
