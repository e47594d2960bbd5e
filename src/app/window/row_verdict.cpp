#include "app/window/row_verdict.h"

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

std::u16string DoneText(const ListRow& row, const swr::ParsedHash* box) {
  if (row.hasExpected) {
    const CompareResult own = CompareWithOwn(row);
    if (own.outcome == CompareOutcome::Match) return WithAlgo(u"OK", own.algo);
    if (own.outcome == CompareOutcome::Mismatch) return u"FAILED";
  }
  if (box != nullptr) {
    const CompareResult pasted = CompareRow(row, box->digest, box->candidates);
    if (pasted.outcome == CompareOutcome::Match) return WithAlgo(u"Match", pasted.algo);
  }
  return row.changed ? u"Done, but the file changed while it was read" : u"Done";
}

}  // namespace

CompareResult CompareRow(const ListRow& row, std::span<const uint8_t> expectedBytes,
                         std::span<const swr::AlgoId> candidates) {
  if (row.status == RowStatus::Failed) return {swr::OutcomeOfError(row.error)};
  CompareResult result = swr::CompareDigests(row.digests, expectedBytes, candidates);
  const bool isOver = row.status == RowStatus::Cancelled;
  if (isOver && result.outcome == CompareOutcome::Pending) {
    result.outcome = CompareOutcome::NotChecked;
  }
  return result;
}

CompareResult CompareWithOwn(const ListRow& row) {
  return CompareRow(row, row.expectedBytes, row.expectedAlgos);
}

std::u16string RowStatusText(const ListRow& row, const swr::ParsedHash* box) {
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
  return DoneText(row, box);
}

RowTint RowTintOf(const ListRow& row, const swr::ParsedHash* box) {
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
  const bool matchesBox = box != nullptr && CompareRow(row, box->digest, box->candidates).outcome ==
                                                CompareOutcome::Match;
  return matchesBox ? RowTint::Good : RowTint::None;
}

}  // namespace app
