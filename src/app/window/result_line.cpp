#include "app/window/result_line.h"

#include <span>
#include <string_view>

#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"

namespace app {
namespace {

using swr::DecimalText;

// "A", "A or B", "A, B or C".
std::u16string JoinAlgoNames(std::span<const swr::AlgoId> ids, std::u16string_view word) {
  std::u16string text;
  for (size_t i = 0; i < ids.size(); ++i) {
    if (i > 0 && i + 1 < ids.size()) text += u", ";
    if (i > 0 && i + 1 == ids.size()) {
      text += u' ';
      text += word;
      text += u' ';
    }
    text += swr::GetAlgo(ids[i]).name;
  }
  return text;
}

std::u16string AlgoName(swr::AlgoId id) { return std::u16string(swr::GetAlgo(id).name); }

}  // namespace

ResultLine BoxLine(const BoxVerdict& verdict, const RowList& rows,
                   const swr::ParsedHash& expected) {
  if (verdict.matches == 1) {
    return {u"Match. The " + AlgoName(verdict.matchAlgo) + u" of " +
                swr::EscapeForDisplay(verdict.firstMatch->name) + u" is the expected hash.",
            ResultKind::Good};
  }
  if (verdict.matches > 1) {
    return {u"Match. " + DecimalText(verdict.matches) + u" files have this " +
                AlgoName(verdict.matchAlgo) + u" hash.",
            ResultKind::Good};
  }
  if (verdict.isPending) return {u"Checking...", ResultKind::Busy};
  if (verdict.named == nullptr && rows.size() > 1) {
    return {u"No match. None of the " + DecimalText(rows.size()) + u" files has this hash.",
            ResultKind::Bad};
  }
  const ListRow& row = verdict.named != nullptr ? *verdict.named : *rows.front();
  if (row.status == RowStatus::Failed) {
    return {swr::EscapeForDisplay(row.name) + u" can't be read, so it can't be compared.",
            ResultKind::Bad};
  }
  return {u"No match. " + swr::EscapeForDisplay(row.name) + u" has a different " +
              JoinAlgoNames(expected.candidates, u"and") + u".",
          ResultKind::Bad};
}

ResultLine FileWantedLine(const swr::ParsedHash& expected) {
  const std::u16string hash = expected.explicitAlgo
                                  ? AlgoName(expected.candidates.front()) + u" hash"
                                  : u"hash (" + JoinAlgoNames(expected.candidates, u"or") + u")";
  return {u"Add the file to compare with this " + hash + u".", ResultKind::Hint};
}

ResultLine NotAHashLine() {
  return {u"This doesn't look like a hash. Paste the hex or base64 value from the website.",
          ResultKind::Hint};
}

ResultLine VerificationLine(const VerificationCounts& counts, bool isHashing) {
  const size_t total = counts.Total();
  if (total == 0) return {};
  const size_t notChecked =
      counts.Of(CompareOutcome::Pending) + counts.Of(CompareOutcome::NotChecked);
  if (notChecked > 0 && isHashing) {
    return {u"Verifying " + DecimalText(total) + u" files...", ResultKind::Busy};
  }
  const size_t ok = counts.Of(CompareOutcome::Match);
  if (ok == total) {
    return {ok == 1 ? u"The file is OK." : u"All " + DecimalText(ok) + u" files are OK.",
            ResultKind::Good};
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
  add(notChecked, u"not checked");
  return {text + u".", ResultKind::Bad};
}

}  // namespace app
