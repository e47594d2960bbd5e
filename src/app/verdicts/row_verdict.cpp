#include "app/verdicts/row_verdict.h"

#include "app/rows/row_comparison.h"
#include "swr/system/error_codes.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

std::u16string WithAlgo(std::u16string_view word, swr::AlgoId algo) {
  std::u16string text(word);
  text += u" (";
  text += swr::GetAlgo(algo).name;
  text += u')';
  return text;
}

std::u16string DoneText(const Row& row, const swr::ParsedHash* expected) {
  if (row.hasExpected) {
    const CompareResult own = CompareWithOwn(row);
    if (own.outcome == CompareOutcome::Match) return WithAlgo(u"OK", own.algo);
    if (own.outcome == CompareOutcome::Mismatch) return u"FAILED";
  }
  if (expected != nullptr) {
    const CompareResult pasted = CompareRow(row, expected->digest, expected->candidates);
    if (pasted.outcome == CompareOutcome::Match) return WithAlgo(u"Match", pasted.algo);
  }
  return row.changed ? u"Done, but the file changed while it was read" : u"Done";
}

}  // namespace

std::u16string RowStatusText(const Row& row, const swr::ParsedHash* expected) {
  switch (row.status) {
    case RowStatus::Waiting:
      return u"Waiting";
    case RowStatus::Hashing:
      return u"Hashing";
    case RowStatus::Cancelled:
      return u"Cancelled";
    case RowStatus::Failed:
      return swr::IsMissingError(row.error) ? u"Missing" : swr::FormatErrorText(row.error);
    case RowStatus::Done:
      break;
  }
  return DoneText(row, expected);
}

RowTint RowTintOf(const Row& row, const swr::ParsedHash* expected) {
  if (row.hasExpected) {
    switch (CompareWithOwn(row).outcome) {
      case CompareOutcome::Match:
        return RowTint::Good;
      case CompareOutcome::Mismatch:
      case CompareOutcome::Missing:
      case CompareOutcome::Unreadable:
        return RowTint::Bad;
      case CompareOutcome::NotChecked:
        return RowTint::None;
      case CompareOutcome::Pending:
        break;
    }
  }
  const bool matchesBox =
      expected != nullptr &&
      CompareRow(row, expected->digest, expected->candidates).outcome == CompareOutcome::Match;
  return matchesBox ? RowTint::Good : RowTint::None;
}

}  // namespace app
