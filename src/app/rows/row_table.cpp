#include "app/rows/row_table.h"

#include <algorithm>

#include "app/rows/row_walk.h"
#include "swr/text/text.h"

namespace app {

std::optional<size_t> RowTable::IndexOf(uint64_t id) const {
  if (id < firstId_ || id - firstId_ >= indexes_.size()) return std::nullopt;
  const size_t index = indexes_[static_cast<size_t>(id - firstId_)];
  return index == NoRow ? std::nullopt : std::optional(index);
}

const Row* RowTable::Find(uint64_t id) const {
  const auto index = IndexOf(id);
  return index ? rows_[*index].get() : nullptr;
}

void RowTable::IndexPaths() const {
  if (indexedPaths_ == rows_.size()) return;
  std::vector<PathIndex::Entry> added;
  added.reserve(rows_.size() - indexedPaths_);
  for (; indexedPaths_ < rows_.size(); ++indexedPaths_) {
    Prefetch(indexedPaths_ + RowsAhead);
    PrefetchTexts(indexedPaths_ + TextsAhead);
    const Row& row = *rows_[indexedPaths_];
    added.push_back({row.path.CaseHash(), row.id});
  }
  pathIndex_.Add(added);
}

void RowTable::DropRemovedPaths() {
  if (pathIndex_.Size() <= 2 * indexedPaths_) return;
  pathIndex_.Clear();
  indexedPaths_ = 0;
}

std::vector<size_t> RowTable::IndexesOfPath(std::u16string_view path) const {
  IndexPaths();
  std::vector<size_t> found;
  pathIndex_.ForEach(swr::CaseHash(path), [&](uint64_t id) {
    const auto index = IndexOf(id);
    if (index && rows_[*index]->path.EqualsNoCase(path)) found.push_back(*index);
  });
  std::ranges::sort(found);
  return found;
}

const Row& RowTable::Append(Row row, bool isNewPath) {
  pathsAreUnique_ = rows_.empty() || (pathsAreUnique_ && isNewPath);
  rows_.push_back(std::make_unique<Row>(std::move(row)));
  Row& added = *rows_.back();
  added.id = nextId_++;
  ids_.push_back(added.id);
  added.path.ShareFolder(folders_);
  if (rows_.size() == 1) firstId_ = added.id;
  indexes_.resize(static_cast<size_t>(added.id - firstId_), NoRow);  // ids that were skipped
  indexes_.push_back(rows_.size() - 1);
  counters_.Add(added);
  return added;
}

// By ascending id, the order in which they were allocated: after a sort, freeing them by index
// would access scattered memory.
template <typename IsRemoved>
void RowTable::FreeRows(const IsRemoved& isRemoved) {
  for (const size_t index : indexes_) {
    if (index != NoRow && isRemoved(index)) rows_[index].reset();
  }
}

void RowTable::Remove(std::span<const uint64_t> ids) {
  std::vector<bool> isRemoved(rows_.size());
  size_t removed = 0;
  for (const uint64_t id : ids) {
    const auto index = IndexOf(id);
    if (!index || isRemoved[*index]) continue;
    isRemoved[*index] = true;
    ++removed;
  }
  if (removed == 0) return;
  const auto indexed = isRemoved.begin() + static_cast<ptrdiff_t>(indexedPaths_);
  indexedPaths_ -= static_cast<size_t>(std::count(isRemoved.begin(), indexed, true));
  FreeRows([&](size_t index) { return isRemoved[index]; });
  std::vector<size_t> newIndexes(rows_.size(), NoRow);
  size_t kept = 0;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (isRemoved[i]) continue;
    newIndexes[i] = kept;
    if (kept != i) rows_[kept] = std::move(rows_[i]);
    ids_[kept] = ids_[i];
    ++kept;
  }
  rows_.resize(kept);
  ids_.resize(kept);
  folders_.DropUnused();
  counters_.Remove(isRemoved);
  MoveIndexes(newIndexes);
  DropRemovedPaths();
}

void RowTable::Clear() {
  pathIndex_.Clear();
  indexedPaths_ = 0;
  FreeRows([](size_t) { return true; });
  rows_.clear();
  rows_.shrink_to_fit();
  ids_.clear();
  ids_.shrink_to_fit();
  folders_.DropUnused();
  indexes_.clear();
  indexes_.shrink_to_fit();
  counters_.Reset(counters_.Expected());
}

void RowTable::Reorder(std::span<const size_t> order) {
  // Only the first rows are indexed. Reordering would mix them with the others.
  if (indexedPaths_ > 0) IndexPaths();
  std::vector<std::unique_ptr<Row>> ordered;
  ordered.reserve(rows_.size());
  std::vector<uint64_t> orderedIds;
  orderedIds.reserve(ids_.size());
  std::vector<size_t> newIndexes(rows_.size());
  for (const size_t index : order) {
    newIndexes[index] = ordered.size();
    ordered.push_back(std::move(rows_[index]));
    orderedIds.push_back(ids_[index]);
  }
  rows_ = std::move(ordered);
  ids_ = std::move(orderedIds);
  counters_.Reorder(order);
  MoveIndexes(newIndexes);
}

void RowTable::CompareWith(const std::optional<swr::ParsedHash>& expected) {
  if (expected != counters_.Expected()) CountAll(expected);
}

// Does not read the rows: in a long sorted list each would be a cache miss.
void RowTable::MoveIndexes(std::span<const size_t> newIndexes) {
  for (size_t& index : indexes_) {
    if (index != NoRow) index = newIndexes[index];
  }
  const auto isRow = [](size_t index) { return index != NoRow; };
  const auto first = std::ranges::find_if(indexes_, isRow);
  firstId_ += static_cast<size_t>(first - indexes_.begin());
  indexes_.erase(indexes_.begin(), first);
  while (!indexes_.empty() && indexes_.back() == NoRow) indexes_.pop_back();
}

void RowTable::CountAll(const std::optional<swr::ParsedHash>& expected) {
  counters_.Reset(expected);
  for (size_t i = 0; i < rows_.size(); ++i) {
    Prefetch(i + RowsAhead);
    counters_.Add(*rows_[i]);
  }
}

}  // namespace app
