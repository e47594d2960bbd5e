// The running counts behind the sentences about the whole list: the one place that owns them. Each
// row that is counted is remembered with what it counted for, so that a change of one row costs the
// same in a list of ten and in one of a hundred thousand. What the counts say is at any time what a
// walk over all rows would say.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "app/window/list_row.h"
#include "app/window/row_verdict.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

using RowList = std::vector<std::unique_ptr<ListRow>>;

using swr::VerificationCounts;

// All rows against the value in the Expected hash box.
struct BoxVerdict {
  size_t matches = 0;
  const ListRow* firstMatch = nullptr;
  swr::AlgoId matchAlgo = {};  // of the first match
  bool isPending = false;      // some row's digest is still to come
  // The last row of the name that came with the value; for no more than whom to blame.
  const ListRow* named = nullptr;
};

// An index is that of a row in the list.
class ListTally {
 public:
  // The rows must outlive the object. None is counted yet.
  explicit ListTally(const RowList& rows) : rows_(rows) {}

  // Counts all rows anew. To be called after rows have gone or changed places.
  void CountAll();
  // Counts the rows behind those that are counted. To be called after rows were added there.
  void CountAdded();
  // To be called after a row that is counted has changed.
  void CountAgain(size_t index);
  // The value that rows are compared with from now on; nothing for an empty box. Counts all rows
  // anew when it is another one.
  void CompareWith(const std::optional<swr::ParsedHash>& box);

  size_t CountedRows() const { return counted_.size(); }
  uint64_t TotalSize() const { return totalSize_; }
  // The rows that a checksum file expects something of.
  const VerificationCounts& Verification() const { return verification_; }
  BoxVerdict Box() const;
  // Whether some row, neither cancelled by the user nor failed, lacks a candidate's digest that
  // nobody has asked for.
  bool WantsCandidates() const { return wanting_ > 0; }

 private:
  // What a row counts for.
  struct Share {
    uint64_t size = 0;
    bool isListed = false;  // a checksum file expects something of it
    CompareOutcome own = {};
    CompareOutcome box = {};
    swr::AlgoId boxAlgo = {};
    bool wantsCandidates = false;

    bool MatchesBox() const { return box == CompareOutcome::Match; }
  };

  Share ShareOf(const ListRow& row) const;
  void Add(const Share& share, size_t index);
  void TakeAway(const Share& share);

  const RowList& rows_;
  std::optional<swr::ParsedHash> box_;
  std::vector<Share> counted_;  // by index
  uint64_t totalSize_ = 0;
  VerificationCounts verification_;
  size_t matches_ = 0;
  size_t firstMatch_ = 0;  // the lowest index of a match; meaningful while there are any
  size_t pending_ = 0;
  size_t wanting_ = 0;
  std::optional<size_t> named_;
};

}  // namespace app
