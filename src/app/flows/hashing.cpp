#include "app/flows/hashing.h"

#include <algorithm>
#include <utility>

#include "app/rows/row_walk.h"

namespace app {

Hashing::Hashing(RowTable& rows, HashQueue& queue, const Options& options, ProgressTimer& timer)
    : rows_(rows), queue_(queue), options_(options), timer_(timer) {}

std::optional<HashJob> Hashing::JobFor(size_t index, swr::AlgoMask mask) {
  const Row& row = rows_[index];
  if (row.status == RowStatus::Failed) return std::nullopt;
  const swr::AlgoMask newMask = mask & ~row.pendingMask & ~row.digests.PresentMask();
  if (newMask == 0) return std::nullopt;
  rows_.UpdateAt(index, [&](RowState& state) {
    state.pendingMask |= newMask;
    state.cancelledByUser = false;
    if (state.status != RowStatus::Hashing) state.status = RowStatus::Waiting;
  });
  return HashJob{.rowId = row.id, .path = &row.path, .mask = newMask, .size = row.size};
}

bool Hashing::QueueJobs(std::vector<HashJob> jobs) {
  if (jobs.empty()) return false;
  queue_.EnqueueAll(std::move(jobs));
  StartTimer();
  return true;
}

bool Hashing::QueueRow(uint64_t id, swr::AlgoMask mask) {
  std::vector<HashJob> jobs;
  if (const auto index = rows_.IndexOf(id)) {
    if (auto job = JobFor(*index, mask)) jobs.push_back(*std::move(job));
  }
  return QueueJobs(std::move(jobs));
}

void Hashing::QueueFrom(size_t first) {
  std::vector<HashJob> jobs;
  for (size_t i = first; i < rows_.Size(); ++i) {
    rows_.Prefetch(i + RowsAhead);
    swr::AlgoMask mask = options_.algorithms;
    if (rows_[i].hasExpected) mask |= swr::CandidateMask(rows_[i].extras->expectedAlgos);
    if (auto job = JobFor(i, mask & swr::AllAlgosMask)) jobs.push_back(*std::move(job));
  }
  QueueJobs(std::move(jobs));
}

bool Hashing::QueueCandidates(const swr::ParsedHash& expected, bool withCancelled) {
  const swr::AlgoMask mask = swr::CandidateMask(expected.candidates);
  std::vector<HashJob> jobs;
  // From the last row back to the first that lacks something. Usually these are the newest rows, so
  // a long list is not walked for each batch of them.
  for (size_t i = rows_.Size(); i > 0 && (withCancelled || rows_.Counters().LacksCandidates());) {
    --i;
    if (i >= RowsAhead) rows_.Prefetch(i - RowsAhead);
    if (rows_[i].cancelledByUser && !withCancelled) continue;
    if (auto job = JobFor(i, mask)) jobs.push_back(*std::move(job));
  }
  std::ranges::reverse(jobs);
  return QueueJobs(std::move(jobs));
}

void Hashing::RemoveRows(std::span<const uint64_t> ids) {
  queue_.Remove(ids);
  rows_.Remove(ids);
}

void Hashing::RemoveAllRows() {
  queue_.CancelAll();
  rows_.Clear();
}

void Hashing::CancelAll() {
  queue_.CancelAll();
  for (size_t i = 0; i < rows_.Size(); ++i) {
    rows_.Prefetch(i + RowsAhead);
    if (rows_[i].pendingMask == 0) continue;
    rows_.UpdateAt(i, [](RowState& row) {
      row.pendingMask = 0;
      row.cancelledByUser = true;
      if (row.status == RowStatus::Waiting || row.status == RowStatus::Hashing) {
        row.status = RowStatus::Cancelled;
      }
    });
  }
}

void Hashing::StartTimer() {
  // Restarting a running timer would postpone its next tick.
  if (!std::exchange(timerRuns_, true)) timer_.StartProgressTimer();
}

void Hashing::StopTimer() {
  if (std::exchange(timerRuns_, false)) timer_.StopProgressTimer();
}

}  // namespace app
