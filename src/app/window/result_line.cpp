#include "app/window/result_line.h"

#include "swr/checksums/verdict_text.h"
#include "swr/text/decimal_text.h"

namespace app {

ResultLine BoxLine(const BoxVerdict& verdict, const RowList& rows,
                   const swr::ParsedHash& expected) {
  if (verdict.matches == 1) {
    return {swr::MatchText(verdict.firstMatch->name, verdict.matchAlgo), ResultKind::Good};
  }
  if (verdict.matches > 1) {
    return {swr::MatchesText(verdict.matches, verdict.matchAlgo), ResultKind::Good};
  }
  if (verdict.isPending) return {u"Checking...", ResultKind::Busy};
  if (verdict.named == nullptr && rows.size() > 1) {
    return {swr::NoMatchAmongText(rows.size()), ResultKind::Bad};
  }
  const ListRow& row = verdict.named != nullptr ? *verdict.named : *rows.front();
  if (row.status == RowStatus::Failed) return {swr::CannotCompareText(row.name), ResultKind::Bad};
  return {swr::NoMatchText(row.name, expected.candidates), ResultKind::Bad};
}

ResultLine FileWantedLine(const swr::ParsedHash& expected) {
  return {swr::FileWantedText(expected), ResultKind::Hint};
}

ResultLine NotAHashLine() { return {swr::NotAHashText(), ResultKind::Hint}; }

ResultLine VerificationLine(const VerificationCounts& counts, bool isHashing) {
  const size_t total = counts.Total();
  if (total == 0) return {};
  const size_t notChecked =
      counts.Of(CompareOutcome::Pending) + counts.Of(CompareOutcome::NotChecked);
  if (notChecked > 0 && isHashing) {
    return {u"Verifying " + swr::DecimalText(total) + u" files...", ResultKind::Busy};
  }
  return {swr::VerificationText(counts), swr::IsAllOk(counts) ? ResultKind::Good : ResultKind::Bad};
}

}  // namespace app
