#include "app/rows/row_comparison.h"

namespace app {

CompareResult CompareRow(const Row& row, std::span<const uint8_t> expectedBytes,
                         std::span<const swr::AlgoId> candidates) {
  if (row.status == RowStatus::Failed) return {swr::OutcomeOfError(row.error)};
  CompareResult result = swr::CompareDigests(row.digests, expectedBytes, candidates);
  if (row.status == RowStatus::Cancelled && result.outcome == CompareOutcome::Pending) {
    result.outcome = CompareOutcome::NotChecked;
  }
  return result;
}

CompareResult CompareWithOwn(const Row& row) {
  return CompareRow(row, row.extras->expectedBytes, row.extras->expectedAlgos);
}

}  // namespace app
