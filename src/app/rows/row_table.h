// The rows of the list, in display order. Only the table changes them, and it keeps everything that
// is derived from them up to date: the lookups by id and by path, and the running counters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/rows/path_index.h"
#include "app/rows/row.h"
#include "app/rows/row_counters.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

// Used on the window's thread only. An index is the row's number in the list view. A reference to a
// row is valid until that row is removed.
class RowTable {
 public:
  class Iterator;

  RowTable() = default;
  RowTable(const RowTable&) = delete;
  RowTable& operator=(const RowTable&) = delete;

  size_t Size() const { return rows_.size(); }
  bool IsEmpty() const { return rows_.empty(); }
  const Row& operator[](size_t index) const { return *rows_[index]; }
  // Does not read the row.
  uint64_t IdAt(size_t index) const { return ids_[index]; }
  // For loops over many rows: call it some rows before the row is read; see row_walk.h.
  // Does nothing for an index without a row.
  void Prefetch(size_t index) const {
    if (index < rows_.size()) PrefetchRow(*rows_[index]);
  }
  // The same for what the row points to; the row itself should have been prefetched.
  void PrefetchTexts(size_t index) const {
    if (index < rows_.size()) PrefetchRowTexts(*rows_[index]);
  }
  Iterator begin() const;
  Iterator end() const;

  // Nothing for an id that was never assigned or whose row is gone.
  const Row* Find(uint64_t id) const;
  std::optional<size_t> IndexOf(uint64_t id) const;
  // The rows of this path, ignoring case as the system does; ascending.
  std::vector<size_t> IndexesOfPath(std::u16string_view path) const;

  // Whether no two rows have the same path, ignoring case. False if that is not known.
  bool PathsAreUnique() const { return pathsAreUnique_; }

  // Puts the row at the end and gives it the next id. Takes constant time. `isNewPath` means that
  // the caller knows that no row has this path yet.
  const Row& Append(Row row, bool isNewPath = false);
  // Uses up an id, for a file that gets no row.
  void SkipId() { ++nextId_; }
  // Removes the rows of these ids. Ids may be repeated; those without a row are ignored.
  void Remove(std::span<const uint64_t> ids);
  void Clear();
  // Moves the row with the index order[i] to the index i. `order` has each index once.
  void Reorder(std::span<const size_t> order);

  // Calls change(RowState&) for the row with this id; does nothing if the row is gone.
  template <typename Change>
  void Update(uint64_t id, Change&& change) {
    if (const auto index = IndexOf(id)) UpdateAt(*index, std::forward<Change>(change));
  }
  template <typename Change>
  void UpdateAt(size_t index, Change&& change) {
    std::forward<Change>(change)(static_cast<RowState&>(*rows_[index]));
    counters_.Recount(index, *rows_[index]);
  }

  const RowCounters& Counters() const { return counters_; }
  // The value of the Expected hash box, which every row is compared with; nothing if the box has no
  // hash.
  const std::optional<swr::ParsedHash>& Expected() const { return counters_.Expected(); }
  // Goes over all rows if the value is a new one.
  void CompareWith(const std::optional<swr::ParsedHash>& expected);

 private:
  static constexpr size_t NoRow = SIZE_MAX;

  // Frees the rows at the indexes for which isRemoved(index). Their entries remain, but are null.
  template <typename IsRemoved>
  void FreeRows(const IsRemoved& isRemoved);
  // Adds the rows that are missing from the index by path.
  void IndexPaths() const;
  // To be called after rows have been removed.
  void DropRemovedPaths();

  // The row that had the index i now has the index newIndexes[i], or is gone if that is NoRow.
  void MoveIndexes(std::span<const size_t> newIndexes);
  void CountAll(const std::optional<swr::ParsedHash>& expected);

  std::vector<std::unique_ptr<Row>> rows_;
  std::vector<uint64_t> ids_;  // of rows_
  FolderTexts folders_;
  bool pathsAreUnique_ = true;
  uint64_t nextId_ = 1;
  // Ids ascend, so a vector serves as the map: the index of the row with id `firstId_` + i, or
  // NoRow where that row is gone.
  std::vector<size_t> indexes_;
  uint64_t firstId_ = 1;
  // Has the first `indexedPaths_` rows. Extended only when it is used, because in many lists it
  // never is. It also has removed rows, but at most as many as others: removing each at once would
  // mean searching the whole index.
  mutable PathIndex pathIndex_;
  mutable size_t indexedPaths_ = 0;
  RowCounters counters_;
};

// Iterates over the rows in display order.
class RowTable::Iterator {
 public:
  using iterator_concept = std::forward_iterator_tag;
  using value_type = Row;
  using difference_type = std::ptrdiff_t;

  Iterator() = default;
  const Row& operator*() const { return **row_; }
  const Row* operator->() const { return row_->get(); }
  Iterator& operator++() {
    ++row_;
    return *this;
  }
  Iterator operator++(int) { return Iterator(row_++); }
  bool operator==(const Iterator&) const = default;

 private:
  friend class RowTable;
  using Position = std::vector<std::unique_ptr<Row>>::const_iterator;
  explicit Iterator(Position row) : row_(row) {}

  Position row_;
};

inline RowTable::Iterator RowTable::begin() const { return Iterator(rows_.begin()); }
inline RowTable::Iterator RowTable::end() const { return Iterator(rows_.end()); }

}  // namespace app
