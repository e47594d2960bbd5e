// The rows of the list, and when a row needs more hashing.
#include <algorithm>
#include <functional>
#include <span>
#include <utility>

#include "app/window/main_window.h"

namespace app {

std::optional<size_t> MainWindow::IndexOfRow(uint64_t id) const {
  if (id < firstIndexedId_ || id - firstIndexedId_ >= rowIndex_.size()) return std::nullopt;
  const size_t index = rowIndex_[static_cast<size_t>(id - firstIndexedId_)];
  return index == NoRow ? std::nullopt : std::optional(index);
}

ListRow* MainWindow::FindRow(uint64_t id) {
  const auto index = IndexOfRow(id);
  return index ? rows[*index].get() : nullptr;
}

void MainWindow::RepaintRow(uint64_t id) {
  if (const auto index = IndexOfRow(id)) view_.RedrawRow(*index);
}

void MainWindow::CountAgain(const ListRow& row) {
  if (const auto index = IndexOfRow(row.id)) tally_.CountAgain(*index);
}

void MainWindow::RebuildRowIndex() {
  rowIndex_.clear();
  // What an emptied list took is given back.
  if (rows.empty()) rowIndex_.shrink_to_fit();
  IndexRowsFrom(0);
  tally_.CountAll();
}

void MainWindow::IndexAddedRows() {
  IndexRowsFrom(tally_.CountedRows());
  tally_.CountAdded();
}

// Ids are given in ascending order and never again, so a table by id, from the lowest one on, stays
// as short as can be.
void MainWindow::IndexRowsFrom(size_t first) {
  paths_.Forget();
  if (first == rows.size()) return;
  const auto idOf = [](const auto& row) { return row->id; };
  const auto added = std::span(rows).subspan(first);
  const uint64_t lowest = (*std::ranges::min_element(added, {}, idOf))->id;
  if (rowIndex_.empty()) firstIndexedId_ = lowest;
  if (lowest < firstIndexedId_) {
    const auto missing = static_cast<size_t>(firstIndexedId_ - lowest);
    rowIndex_.insert(rowIndex_.begin(), missing, NoRow);
    firstIndexedId_ = lowest;
  }
  for (size_t i = first; i < rows.size(); ++i) {
    const auto place = static_cast<size_t>(rows[i]->id - firstIndexedId_);
    if (place >= rowIndex_.size()) rowIndex_.resize(place + 1, NoRow);
    rowIndex_[place] = i;
  }
}

std::optional<HashJob> MainWindow::JobFor(ListRow& row, swr::AlgoMask mask) {
  if (row.status == RowStatus::Failed) return std::nullopt;
  const swr::AlgoMask newMask = mask & ~row.pendingMask & ~row.digests.PresentMask();
  if (newMask == 0) return std::nullopt;
  row.pendingMask |= newMask;
  row.cancelledByUser = false;
  if (row.status != RowStatus::Hashing) row.status = RowStatus::Waiting;
  CountAgain(row);
  return HashJob{.rowId = row.id, .path = row.path, .mask = newMask, .size = row.size};
}

bool MainWindow::QueueJobs(std::vector<HashJob> jobs) {
  if (jobs.empty()) return false;
  queue_.EnqueueAll(std::move(jobs));
  StartProgressTimer();
  return true;
}

bool MainWindow::QueueRow(ListRow& row, swr::AlgoMask mask) {
  std::vector<HashJob> jobs;
  if (auto job = JobFor(row, mask)) jobs.push_back(*std::move(job));
  return QueueJobs(std::move(jobs));
}

void MainWindow::QueueRowsFrom(size_t first) {
  std::vector<HashJob> jobs;
  for (size_t i = first; i < rows.size(); ++i) {
    ListRow& row = *rows[i];
    swr::AlgoMask mask = algorithms;
    if (row.hasExpected) mask |= swr::CandidateMask(row.expectedAlgos);
    if (auto job = JobFor(row, mask & swr::AllAlgosMask)) jobs.push_back(*std::move(job));
  }
  QueueJobs(std::move(jobs));
}

void MainWindow::QueueAllRows() { QueueRowsFrom(0); }

RowIds MainWindow::SelectedIds() const { return IdsOf(view_.SelectedRows()); }

RowIds MainWindow::IdsOf(const std::vector<size_t>& indexes) const {
  RowIds ids;
  ids.reserve(indexes.size());
  for (const size_t index : indexes) {
    if (index < rows.size()) ids.push_back(rows[index]->id);
  }
  return ids;
}

std::vector<const ListRow*> MainWindow::RowsOf(const RowIds& ids) const {
  std::vector<const ListRow*> found;
  found.reserve(ids.size());
  for (const uint64_t id : ids) {
    if (const auto index = IndexOfRow(id)) found.push_back(rows[*index].get());
  }
  return found;
}

void MainWindow::RemoveRows(const RowIds& ids) {
  for (const uint64_t id : ids) {
    if (const auto index = IndexOfRow(id)) rows[*index].reset();
  }
  queue_.Remove(ids);
  std::erase(rows, nullptr);
  RebuildRowIndex();
  view_.ClearSelection();
  view_.SetRowCount(rows.size());
  RefreshVerdicts();
}

void MainWindow::ClearList() {
  queue_.CancelAll();
  rows.clear();
  RebuildRowIndex();
  compareArmed = false;
  lookupPending = false;
  view_.SetRowCount(0);
  HideBanner();
  RefreshVerdicts();
}

void MainWindow::CancelAll() {
  queue_.CancelAll();
  for (const auto& row : rows) {
    if (row->pendingMask == 0) continue;
    row->pendingMask = 0;
    row->cancelledByUser = true;
    if (row->status == RowStatus::Waiting || row->status == RowStatus::Hashing) {
      row->status = RowStatus::Cancelled;
    }
  }
  tally_.CountAll();
  view_.RedrawRows();
  CompareExpected();
  UpdateStatusLine();
}

std::vector<size_t> MainWindow::SelectedIndexes() const {
  std::vector<size_t> selected = view_.SelectedRows();
  std::erase_if(selected, [&](size_t index) { return index >= rows.size(); });
  return selected;
}

ListRow* MainWindow::SingleSelectedRow() {
  if (view_.SelectedRowCount() != 1) return nullptr;
  const std::vector<size_t> selected = SelectedIndexes();
  return selected.empty() ? nullptr : rows[selected.front()].get();
}

void MainWindow::RefreshVerdicts() {
  CompareExpected();
  RefreshDetails();
  UpdateStatusLine();
}

}  // namespace app
