#include "swr/checksums/verdict_text.h"

#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"

namespace swr {
namespace {

std::u16string AlgoName(AlgoId id) { return std::u16string(GetAlgo(id).name); }

}  // namespace

std::u16string JoinAlgoNames(std::span<const AlgoId> ids, std::u16string_view word) {
  std::u16string text;
  for (size_t i = 0; i < ids.size(); ++i) {
    if (i > 0 && i + 1 < ids.size()) text += u", ";
    if (i > 0 && i + 1 == ids.size()) {
      text += u' ';
      text += word;
      text += u' ';
    }
    text += GetAlgo(ids[i]).name;
  }
  return text;
}

std::u16string MatchText(std::u16string_view fileName, AlgoId algo) {
  return u"Match. The " + AlgoName(algo) + u" of " + EscapeForDisplay(fileName) +
         u" is the expected hash.";
}

std::u16string MatchesText(size_t matches, AlgoId algo) {
  return u"Match. " + DecimalText(matches) + u" files have this " + AlgoName(algo) + u" hash.";
}

std::u16string NoMatchAmongText(size_t files) {
  return u"No match. None of the " + DecimalText(files) + u" files has this hash.";
}

std::u16string NoMatchText(std::u16string_view fileName, std::span<const AlgoId> candidates) {
  return u"No match. " + EscapeForDisplay(fileName) + u" has a different " +
         JoinAlgoNames(candidates, u"and") + u".";
}

std::u16string CannotCompareText(std::u16string_view fileName) {
  return EscapeForDisplay(fileName) + u" can't be read, so it can't be compared.";
}

std::u16string NotAHashText() {
  return u"This doesn't look like a hash. Paste the hex or base64 value from the website.";
}

std::u16string FileWantedText(const ParsedHash& expected) {
  const std::u16string hash = expected.explicitAlgo
                                  ? AlgoName(expected.candidates.front()) + u" hash"
                                  : u"hash (" + JoinAlgoNames(expected.candidates, u"or") + u")";
  return u"Add the file to compare with this " + hash + u".";
}

bool IsAllOk(const VerificationCounts& counts) {
  return counts.Of(CompareOutcome::Match) == counts.Total();
}

std::u16string VerificationText(const VerificationCounts& counts) {
  const size_t ok = counts.Of(CompareOutcome::Match);
  if (IsAllOk(counts)) {
    return ok == 1 ? u"The file is OK." : u"All " + DecimalText(ok) + u" files are OK.";
  }
  std::u16string text = u"Not all files match: " + DecimalText(ok) + u" OK";
  const auto add = [&](size_t number, std::u16string_view word) {
    if (number == 0) return;
    text += u", " + DecimalText(number) + u' ';
    text += word;
  };
  add(counts.Of(CompareOutcome::Mismatch), u"FAILED");
  add(counts.Of(CompareOutcome::Missing), u"missing");
  add(counts.Of(CompareOutcome::Unreadable), u"unreadable");
  add(counts.Of(CompareOutcome::Pending) + counts.Of(CompareOutcome::NotChecked), u"not checked");
  return text + u".";
}

std::u16string SkippedLinesText(size_t lines, uint32_t firstLine) {
  return DecimalText(lines) + (lines == 1 ? u" line" : u" lines") +
         u" of the checksum file aren't checksums and were skipped (first: line " +
         DecimalText(firstLine) + u")";
}

}  // namespace swr
