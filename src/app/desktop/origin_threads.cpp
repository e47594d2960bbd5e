#include "app/desktop/origin_threads.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include "swr/system/detached_thread.h"

namespace app {

class OriginThreads::State {
 public:
  State(ReadFunction read, std::function<void()> announce)
      : read_(std::move(read)), announce_(std::move(announce)) {}

  // The body of a thread.
  void Read(uint64_t rowId, const std::u16string& path) { Deliver({rowId, read_(path)}); }

  // The record of this row is not late until Await returns.
  void StartWait(uint64_t rowId);
  std::optional<swr::ZoneRecord> Await(std::chrono::milliseconds longest);
  std::vector<RowOrigin> TakeLate();
  void Deliver(RowOrigin origin);
  void Stop();

 private:
  const ReadFunction read_;
  const std::function<void()> announce_;
  std::mutex mutex_;
  std::condition_variable delivered_;  // the awaited record
  // Guarded by mutex_, from here on.
  uint64_t awaitedRow_ = 0;  // 0 for none
  std::optional<swr::ZoneRecord> awaited_;
  std::vector<RowOrigin> late_;
  bool stopped_ = false;
};

void OriginThreads::State::Deliver(RowOrigin origin) {
  const std::lock_guard lock(mutex_);
  if (stopped_) return;
  if (origin.rowId == awaitedRow_) {
    awaited_ = std::move(origin.record);
    delivered_.notify_one();
    return;
  }
  late_.push_back(std::move(origin));
  // Under the lock: once Stop has returned, nothing is announced.
  announce_();
}

void OriginThreads::State::StartWait(uint64_t rowId) {
  const std::lock_guard lock(mutex_);
  awaitedRow_ = rowId;
}

std::optional<swr::ZoneRecord> OriginThreads::State::Await(std::chrono::milliseconds longest) {
  std::unique_lock lock(mutex_);
  delivered_.wait_for(lock, longest, [this] { return awaited_.has_value(); });
  awaitedRow_ = 0;
  return std::exchange(awaited_, std::nullopt);
}

std::vector<RowOrigin> OriginThreads::State::TakeLate() {
  const std::lock_guard lock(mutex_);
  return std::exchange(late_, {});
}

void OriginThreads::State::Stop() {
  const std::lock_guard lock(mutex_);
  stopped_ = true;
}

OriginThreads::OriginThreads(ReadFunction read, std::function<void()> announce,
                             std::chrono::milliseconds longestWait)
    : state_(std::make_shared<State>(std::move(read), std::move(announce))),
      longestWait_(longestWait) {}

OriginThreads::~OriginThreads() { state_->Stop(); }

std::optional<swr::ZoneRecord> OriginThreads::ReadOrigin(uint64_t rowId,
                                                         const std::u16string& path) {
  state_->StartWait(rowId);
  const bool isStarted =
      swr::StartDetachedThread([state = state_, rowId, path] { state->Read(rowId, path); });
  if (!isStarted) state_->Deliver({.rowId = rowId, .record = {}});
  return state_->Await(longestWait_);
}

std::vector<RowOrigin> OriginThreads::TakeLateOrigins() { return state_->TakeLate(); }

}  // namespace app
