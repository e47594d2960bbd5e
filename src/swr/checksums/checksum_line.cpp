#include "swr/checksums/checksum_line.h"

#include <utility>

#include "swr/checksums/digest_decoders.h"
#include "swr/checksums/xxh3_prefix.h"
#include "swr/text/text.h"

namespace swr {
namespace {

using Bytes = std::optional<std::vector<uint8_t>>;

// Removes the leading backslash that marks an escaped name; returns whether there was one.
bool TakeEscapeMark(std::u16string_view& line) {
  const bool isEscaped = line.starts_with(u'\\');
  if (isEscaped) line.remove_prefix(1);
  return isEscaped;
}

std::u16string NameFrom(std::u16string_view text, bool isEscaped) {
  return isEscaped ? UnescapeName(text) : std::u16string(text);
}

}  // namespace

bool ParseTaggedLine(std::u16string_view line, ChecksumLine& result) {
  const bool isEscaped = TakeEscapeMark(line);
  const size_t open = line.find(u" (");
  if (open == line.npos) return false;
  const std::optional<AlgoId> algo = ParseAlgoName(line.substr(0, open));
  if (!algo) return false;
  const size_t close = line.rfind(u") = ");
  if (close == line.npos || close < open + 2) return false;
  Bytes digest = DecodeHexStrict(TrimText(line.substr(close + 4)));
  if (!digest || digest->size() != GetAlgo(*algo).digestSize) return false;
  result.name = NameFrom(line.substr(open + 2, close - open - 2), isEscaped);
  result.digest = *std::move(digest);
  result.candidates = {*algo};
  return true;
}

bool ParsePlainLine(std::u16string_view line, std::optional<AlgoId> hint, ChecksumLine& result) {
  const bool isEscaped = TakeEscapeMark(line);
  const size_t space = line.find(u' ');
  if (space == line.npos || space + 1 == line.size()) return false;
  std::u16string_view name = line.substr(space + 1);
  if (name.front() == u' ' || name.front() == u'*') name.remove_prefix(1);
  if (name.empty()) return false;
  std::u16string_view token = line.substr(0, space);
  const bool isXxh3 = TakeXxh3Prefix(token);
  Bytes digest = DecodeHexStrict(token);
  if (!digest) return false;
  std::vector<AlgoId> candidates;
  if (isXxh3) {
    // A digest of any length is accepted: a wrong one fails the verification instead of being
    // skipped.
    candidates = {AlgoId::Xxh3_64};
  } else if (hint && digest->size() == GetAlgo(*hint).digestSize) {
    candidates = {*hint};
  } else {
    candidates = AlgosForDigestSize(digest->size());
  }
  if (candidates.empty()) return false;
  result.name = NameFrom(name, isEscaped);
  result.digest = *std::move(digest);
  result.candidates = std::move(candidates);
  return true;
}

bool ParseSfvLine(std::u16string_view line, ChecksumLine& result) {
  const size_t space = line.rfind(u' ');
  if (space == line.npos || space == 0) return false;
  Bytes digest = DecodeHexStrict(line.substr(space + 1));
  if (!digest || digest->size() != GetAlgo(AlgoId::Crc32).digestSize) return false;
  const std::u16string_view name = TrimText(line.substr(0, space));
  if (name.empty()) return false;
  result.name = name;
  result.digest = *std::move(digest);
  result.candidates = {AlgoId::Crc32};
  return true;
}

std::u16string UnescapeName(std::u16string_view text) {
  std::u16string name;
  name.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t next = text[i] == u'\\' && i + 1 < text.size() ? text[i + 1] : u'\0';
    if (next == u'\\' || next == u'n') {
      name += next == u'n' ? u'\n' : u'\\';
      ++i;
    } else {
      name += text[i];
    }
  }
  return name;
}

}  // namespace swr
