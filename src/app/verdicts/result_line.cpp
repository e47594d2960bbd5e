#include "app/verdicts/result_line.h"

#include "swr/checksums/verdict_text.h"
#include "swr/text/decimal_text.h"

namespace app {

ResultLine ExpectedHashLine(const RowTable& rows, const swr::ParsedHash& expected,
                            bool moreRowsMayCome) {
  const RowCounters& counters = rows.Counters();
  if (counters.Matches() == 1) {
    return {swr::MatchText(rows[counters.FirstMatch()].Name(), counters.MatchAlgo()),
            ResultKind::Good};
  }
  if (counters.Matches() > 1) {
    return {swr::MatchesText(counters.Matches(), counters.MatchAlgo()), ResultKind::Good};
  }
  if (counters.HasPending() || moreRowsMayCome) return {u"Checking...", ResultKind::Busy};
  if (!counters.Named() && rows.Size() > 1) {
    return {swr::NoMatchAmongText(rows.Size()), ResultKind::Bad};
  }
  const Row& row = rows[counters.Named().value_or(0)];
  if (row.status == RowStatus::Failed) return {swr::CannotCompareText(row.Name()), ResultKind::Bad};
  return {swr::NoMatchText(row.Name(), expected.candidates), ResultKind::Bad};
}

ResultLine FileWantedLine(const swr::ParsedHash& expected) {
  return {swr::FileWantedText(expected), ResultKind::Hint};
}

ResultLine NotAHashLine() { return {swr::NotAHashText(), ResultKind::Hint}; }

ResultLine VerificationLine(const swr::VerificationCounts& counts, bool isWorking,
                            bool moreRowsMayCome) {
  const size_t total = counts.Total();
  if (total == 0) return {};
  const size_t notChecked =
      counts.Of(swr::CompareOutcome::Pending) + counts.Of(swr::CompareOutcome::NotChecked);
  if ((notChecked > 0 && isWorking) || moreRowsMayCome) {
    return {u"Verifying " + swr::DecimalText(total) + u" files...", ResultKind::Busy};
  }
  return {swr::VerificationText(counts), swr::IsAllOk(counts) ? ResultKind::Good : ResultKind::Bad};
}

}  // namespace app
