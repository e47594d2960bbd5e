#include "app/window/list_tally.h"

#include <algorithm>

#include "swr/text/text.h"

namespace app {

void ListTally::CountAll() {
  counted_.clear();
  totalSize_ = 0;
  verification_ = {};
  matches_ = 0;
  pending_ = 0;
  wanting_ = 0;
  named_.reset();
  CountAdded();
}

void ListTally::CountAdded() {
  counted_.reserve(rows_.size());
  for (size_t i = counted_.size(); i < rows_.size(); ++i) {
    counted_.push_back(ShareOf(*rows_[i]));
    Add(counted_.back(), i);
    const bool isNamed =
        box_ && !box_->name.empty() && swr::EqualsNoCase(rows_[i]->name, box_->name);
    if (isNamed) named_ = i;
  }
}

void ListTally::CountAgain(size_t index) {
  const bool wasMatch = counted_[index].MatchesBox();
  TakeAway(counted_[index]);
  counted_[index] = ShareOf(*rows_[index]);
  Add(counted_[index], index);
  // A match that is none any more is rare: a file that could be read the first time and not the
  // second. It never comes back, so all searches together go through the list once.
  if (wasMatch && index == firstMatch_ && matches_ > 0 && !counted_[index].MatchesBox()) {
    const auto next = std::find_if(counted_.begin() + static_cast<ptrdiff_t>(index), counted_.end(),
                                   [](const Share& s) { return s.MatchesBox(); });
    firstMatch_ = static_cast<size_t>(next - counted_.begin());
  }
}

void ListTally::CompareWith(const std::optional<swr::ParsedHash>& box) {
  if (box == box_) return;
  box_ = box;
  CountAll();
}

BoxVerdict ListTally::Box() const {
  BoxVerdict verdict{.matches = matches_, .isPending = pending_ > 0};
  if (matches_ > 0) {
    verdict.firstMatch = rows_[firstMatch_].get();
    verdict.matchAlgo = counted_[firstMatch_].boxAlgo;
  }
  if (named_) verdict.named = rows_[*named_].get();
  return verdict;
}

ListTally::Share ListTally::ShareOf(const ListRow& row) const {
  Share share{.size = row.size, .isListed = row.hasExpected};
  if (row.hasExpected) share.own = CompareWithOwn(row).outcome;
  if (!box_) return share;
  const CompareResult pasted = CompareRow(row, box_->digest, box_->candidates);
  share.box = pasted.outcome;
  share.boxAlgo = pasted.algo;
  share.wantsCandidates =
      row.status != RowStatus::Failed && !row.cancelledByUser &&
      std::ranges::any_of(box_->candidates, [&](swr::AlgoId id) {
        return !row.digests[swr::IndexOf(id)].present && (row.pendingMask & swr::MaskOf(id)) == 0;
      });
  return share;
}

void ListTally::Add(const Share& share, size_t index) {
  totalSize_ += share.size;
  if (share.isListed) ++verification_.Of(share.own);
  if (share.MatchesBox()) firstMatch_ = matches_++ == 0 ? index : std::min(firstMatch_, index);
  if (share.box == CompareOutcome::Pending) ++pending_;
  if (share.wantsCandidates) ++wanting_;
}

void ListTally::TakeAway(const Share& share) {
  totalSize_ -= share.size;
  if (share.isListed) --verification_.Of(share.own);
  if (share.MatchesBox()) --matches_;
  if (share.box == CompareOutcome::Pending) --pending_;
  if (share.wantsCandidates) --wanting_;
}

}  // namespace app
