// The running counters for the texts about the whole list. The contribution of each row is stored,
// so that a change of one row takes the same time in a list of ten rows and in one of a hundred
// thousand. At any time the counters equal what a pass over all rows would give.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/rows/row.h"
#include "app/rows/row_comparison.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

// Kept up to date by RowTable; all others only read. Indexes are those of the table.
class RowCounters {
 public:
  uint64_t TotalSize() const { return totalSize_; }
  // The rows with an expected digest from a checksum file.
  const swr::VerificationCounts& Verification() const { return verification_; }

  // The rows compared with the expected hash.
  size_t Matches() const { return matches_; }
  size_t FirstMatch() const { return firstMatch_; }  // valid only while there are matches
  swr::AlgoId MatchAlgo() const { return contributions_[firstMatch_].expectedAlgo; }  // likewise
  bool HasPending() const { return pending_ > 0; }
  // The last row whose name came with the expected hash.
  std::optional<size_t> Named() const { return named_; }
  // Whether some row, neither cancelled by the user nor failed, lacks a candidate's digest that has
  // not been queued.
  bool LacksCandidates() const { return lacking_ > 0; }

  // Resets the counters. From now on rows are compared with this value; nothing for an empty box.
  void Reset(const std::optional<swr::ParsedHash>& expected);
  // Adds the row after those counted so far.
  void Add(const Row& row);
  // Updates the contribution of the row with this index.
  void Recount(size_t index, const Row& row);
  // To be called when the rows at these indexes are removed; the others move up.
  void Remove(const std::vector<bool>& isRemoved);
  // To be called when the row with the index order[i] gets the index i.
  void Reorder(std::span<const size_t> order);

  const std::optional<swr::ParsedHash>& Expected() const { return expected_; }

 private:
  struct Contribution {
    uint64_t size = 0;
    bool isListed = false;  // it has an expected digest from a checksum file
    CompareOutcome own = {};
    CompareOutcome expected = {};
    swr::AlgoId expectedAlgo = {};
    bool lacksCandidates = false;
    bool isNamed = false;  // its name came with the expected hash

    bool IsMatch() const { return expected == CompareOutcome::Match; }
  };

  Contribution ContributionOf(const Row& row) const;
  void Include(const Contribution& contribution, size_t index);
  void Exclude(const Contribution& contribution);
  // To be called after the indexes have changed.
  void FindFirstMatchAndNamed();

  std::optional<swr::ParsedHash> expected_;
  std::vector<Contribution> contributions_;  // by index
  uint64_t totalSize_ = 0;
  swr::VerificationCounts verification_;
  size_t matches_ = 0;
  size_t firstMatch_ = 0;  // the lowest index of a match
  size_t pending_ = 0;
  size_t lacking_ = 0;
  std::optional<size_t> named_;
};

}  // namespace app
