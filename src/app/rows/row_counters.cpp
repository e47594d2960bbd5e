#include "app/rows/row_counters.h"

#include <algorithm>
#include <utility>

#include "swr/text/text.h"

namespace app {

void RowCounters::Reset(const std::optional<swr::ParsedHash>& expected) {
  if (&expected != &expected_) expected_ = expected;
  contributions_.clear();
  totalSize_ = 0;
  verification_ = {};
  matches_ = 0;
  pending_ = 0;
  lacking_ = 0;
  named_.reset();
}

void RowCounters::Add(const Row& row) {
  const size_t index = contributions_.size();
  contributions_.push_back(ContributionOf(row));
  Include(contributions_.back(), index);
  if (contributions_.back().isNamed) named_ = index;
}

void RowCounters::Recount(size_t index, const Row& row) {
  const bool wasMatch = contributions_[index].IsMatch();
  Exclude(contributions_[index]);
  contributions_[index] = ContributionOf(row);
  Include(contributions_[index], index);
  // A row rarely stops matching: its file could be read the first time but not the second. Such a
  // row never matches again, so all these searches together pass over the list at most once.
  if (wasMatch && index == firstMatch_ && matches_ > 0 && !contributions_[index].IsMatch()) {
    const auto next =
        std::find_if(contributions_.begin() + static_cast<ptrdiff_t>(index), contributions_.end(),
                     [](const Contribution& c) { return c.IsMatch(); });
    firstMatch_ = static_cast<size_t>(next - contributions_.begin());
  }
}

// Uses the stored contributions of the other rows: in a long list, reading those rows again would
// take far longer.
void RowCounters::Remove(const std::vector<bool>& isRemoved) {
  size_t kept = 0;
  for (size_t i = 0; i < contributions_.size(); ++i) {
    if (isRemoved[i]) {
      Exclude(contributions_[i]);
    } else {
      contributions_[kept++] = contributions_[i];
    }
  }
  contributions_.resize(kept);
  FindFirstMatchAndNamed();
}

void RowCounters::Reorder(std::span<const size_t> order) {
  std::vector<Contribution> ordered;
  ordered.reserve(order.size());
  for (const size_t index : order) ordered.push_back(contributions_[index]);
  contributions_ = std::move(ordered);
  FindFirstMatchAndNamed();
}

void RowCounters::FindFirstMatchAndNamed() {
  if (matches_ > 0) {
    const auto first = std::ranges::find_if(contributions_, &Contribution::IsMatch);
    firstMatch_ = static_cast<size_t>(first - contributions_.begin());
  }
  named_.reset();
  for (size_t i = contributions_.size(); i > 0 && !named_; --i) {
    if (contributions_[i - 1].isNamed) named_ = i - 1;
  }
}

RowCounters::Contribution RowCounters::ContributionOf(const Row& row) const {
  Contribution contribution{.size = row.size, .isListed = row.hasExpected};
  if (row.hasExpected) contribution.own = CompareWithOwn(row).outcome;
  if (!expected_) return contribution;
  const CompareResult compared = CompareRow(row, expected_->digest, expected_->candidates);
  contribution.expected = compared.outcome;
  contribution.expectedAlgo = compared.algo;
  contribution.isNamed = !expected_->name.empty() && swr::EqualsNoCase(row.Name(), expected_->name);
  contribution.lacksCandidates =
      row.status != RowStatus::Failed && !row.cancelledByUser &&
      std::ranges::any_of(expected_->candidates, [&](swr::AlgoId id) {
        return !row.digests.Has(swr::IndexOf(id)) && (row.pendingMask & swr::MaskOf(id)) == 0;
      });
  return contribution;
}

void RowCounters::Include(const Contribution& contribution, size_t index) {
  totalSize_ += contribution.size;
  if (contribution.isListed) ++verification_.Of(contribution.own);
  if (contribution.IsMatch()) {
    firstMatch_ = matches_++ == 0 ? index : std::min(firstMatch_, index);
  }
  if (contribution.expected == CompareOutcome::Pending) ++pending_;
  if (contribution.lacksCandidates) ++lacking_;
}

void RowCounters::Exclude(const Contribution& contribution) {
  totalSize_ -= contribution.size;
  if (contribution.isListed) --verification_.Of(contribution.own);
  if (contribution.IsMatch()) --matches_;
  if (contribution.expected == CompareOutcome::Pending) --pending_;
  if (contribution.lacksCandidates) --lacking_;
}

}  // namespace app
