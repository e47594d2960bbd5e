#include "app/intake/file_intake.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

#include "app/intake/intake_run.h"
#include "swr/system/detached_thread.h"
#include "swr/system/thread_schedule.h"

namespace app {
namespace {

constexpr std::chrono::milliseconds LongestStop{500};
constexpr size_t FilesPerBatch = 256;

struct WaitingRequest {
  uint64_t id = 0;
  IntakeRequest request;
  bool cancelled = false;
};

size_t SizeOf(const IntakeBatch& batch) { return batch.announcedPaths.size() + batch.files.size(); }

}  // namespace

class FileIntake::State {
 public:
  explicit State(std::function<bool()> announce) : announce_(std::move(announce)) {}

  void Add(WaitingRequest request);
  void Cancel();
  void Discard();
  void Stop();
  // Waits until the thread has ended, but no longer than LongestStop.
  void WaitForEnd();
  bool WaitForBatch(std::chrono::steady_clock::time_point deadline);
  std::unique_ptr<IntakeBatch> Take();
  void GiveBack(std::unique_ptr<IntakeBatch> batch);
  bool AnnounceNext();

  // The thread's body.
  void RunUntilStopped();
  // Works on all waiting requests, on the calling thread.
  void RunWaitingRequests();

 private:
  void Run(std::unique_lock<std::mutex>& lock);
  template <typename Change>
  bool Publish(Change&& change);
  // The next three are called under mutex_.
  void AddBatch();
  void DiscardAll();
  bool CanTakeFullBatch() const;

  const std::function<bool()> announce_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;   // for the thread: a new request, or the stop
  std::condition_variable moved_;  // for the window: a batch is complete, or the thread is idle
  // Guarded by mutex_, from here to hasEnded_.
  std::deque<WaitingRequest> requests_;
  std::deque<std::unique_ptr<IntakeBatch>> batches_;
  std::vector<std::unique_ptr<IntakeBatch>> spareBatches_;
  uint64_t current_ = 0;  // the request that is being worked on; 0 for none
  bool discardsCurrent_ = false;
  bool announced_ = false;
  bool stop_ = false;
  bool hasEnded_ = false;
  // Changed under mutex_; the request that is being worked on reads it without the lock.
  std::atomic<bool> cancel_ = false;
};

void FileIntake::State::Add(WaitingRequest request) {
  {
    const std::lock_guard lock(mutex_);
    if (stop_) return;
    requests_.push_back(std::move(request));
  }
  wake_.notify_one();
}

void FileIntake::State::Cancel() {
  const std::lock_guard lock(mutex_);
  for (WaitingRequest& waiting : requests_) waiting.cancelled = true;
  if (current_ != 0) cancel_ = true;
}

void FileIntake::State::DiscardAll() {
  requests_.clear();
  batches_.clear();
  if (current_ == 0) return;
  discardsCurrent_ = true;
  cancel_ = true;
}

void FileIntake::State::Discard() {
  const std::lock_guard lock(mutex_);
  DiscardAll();
}

void FileIntake::State::Stop() {
  {
    const std::lock_guard lock(mutex_);
    DiscardAll();
    stop_ = true;
  }
  wake_.notify_one();
}

void FileIntake::State::WaitForEnd() {
  std::unique_lock lock(mutex_);
  moved_.wait_for(lock, LongestStop, [this] { return hasEnded_; });
}

bool FileIntake::State::CanTakeFullBatch() const {
  if (batches_.empty()) return false;
  return batches_.size() > 1 || batches_.front()->end || SizeOf(*batches_.front()) == FilesPerBatch;
}

bool FileIntake::State::WaitForBatch(std::chrono::steady_clock::time_point deadline) {
  std::unique_lock lock(mutex_);
  moved_.wait_until(lock, deadline,
                    [this] { return CanTakeFullBatch() || (requests_.empty() && current_ == 0); });
  return CanTakeFullBatch() && std::chrono::steady_clock::now() < deadline;
}

std::unique_ptr<IntakeBatch> FileIntake::State::Take() {
  const std::lock_guard lock(mutex_);
  if (batches_.empty()) return nullptr;
  std::unique_ptr<IntakeBatch> taken = std::move(batches_.front());
  batches_.pop_front();
  return taken;
}

void FileIntake::State::GiveBack(std::unique_ptr<IntakeBatch> batch) {
  const std::lock_guard lock(mutex_);
  if (current_ != 0 && !stop_) spareBatches_.push_back(std::move(batch));
}

void FileIntake::State::AddBatch() {
  if (spareBatches_.empty()) {
    batches_.push_back(std::make_unique<IntakeBatch>());
  } else {
    batches_.push_back(std::move(spareBatches_.back()));
    spareBatches_.pop_back();
  }
  IntakeBatch& batch = *batches_.back();
  batch.requestId = current_;
  batch.announcedPaths.clear();
  batch.files.clear();
  batch.end.reset();
}

bool FileIntake::State::AnnounceNext() {
  const std::lock_guard lock(mutex_);
  if (!batches_.empty()) return false;
  announced_ = false;
  return true;
}

void FileIntake::State::RunUntilStopped() {
  // Like the worker's thread, so that neither displaces the other.
  swr::PreferThroughput();
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return stop_ || !requests_.empty(); });
    if (stop_) break;
    Run(lock);
  }
  hasEnded_ = true;
  moved_.notify_all();
}

void FileIntake::State::RunWaitingRequests() {
  std::unique_lock lock(mutex_);
  while (!requests_.empty()) Run(lock);
}

// Works on the first waiting request.
void FileIntake::State::Run(std::unique_lock<std::mutex>& lock) {
  const WaitingRequest next = std::move(requests_.front());
  requests_.pop_front();
  current_ = next.id;
  discardsCurrent_ = false;
  cancel_ = next.cancelled;
  lock.unlock();
  const IntakeCallbacks callbacks{
      .announced =
          [this](std::u16string path) {
            return Publish(
                [&](IntakeBatch& batch) { batch.announcedPaths.push_back(std::move(path)); });
          },
      .found =
          [this](IntakeFile&& file) {
            return Publish([&](IntakeBatch& batch) { batch.files.push_back(std::move(file)); });
          }};
  IntakeEnd end = RunIntake(next.request, cancel_, callbacks);
  Publish([&](IntakeBatch& batch) { batch.end = std::move(end); });
  lock.lock();
  spareBatches_.clear();
  current_ = 0;
  moved_.notify_all();
}

// Changes the last batch of the current request and notifies the window. False if the request has
// been discarded.
template <typename Change>
bool FileIntake::State::Publish(Change&& change) {
  const std::lock_guard lock(mutex_);
  if (stop_ || discardsCurrent_) return false;
  if (batches_.empty() || batches_.back()->requestId != current_ ||
      SizeOf(*batches_.back()) == FilesPerBatch) {
    AddBatch();
  }
  change(*batches_.back());
  const IntakeBatch& last = *batches_.back();
  if (last.end || SizeOf(last) == FilesPerBatch) moved_.notify_all();
  // Under the lock: once Stop has returned, nothing is announced.
  if (!announced_) announced_ = announce_();
  return true;
}

FileIntake::FileIntake(std::function<bool()> announce)
    : state_(std::make_shared<State>(std::move(announce))) {}

FileIntake::~FileIntake() { Stop(); }

void FileIntake::Stop() {
  state_->Stop();
  if (std::exchange(hasThread_, false)) state_->WaitForEnd();
}

uint64_t FileIntake::Start(IntakeRequest request) {
  const uint64_t id = ++lastId_;
  state_->Add({.id = id, .request = std::move(request)});
  if (!hasThread_) {
    hasThread_ = swr::StartDetachedThread([state = state_] { state->RunUntilStopped(); });
  }
  // A window that waits is better than files that never arrive.
  if (!hasThread_) state_->RunWaitingRequests();
  return id;
}

void FileIntake::Cancel() { state_->Cancel(); }

void FileIntake::Discard() { state_->Discard(); }

bool FileIntake::WaitForBatch(std::chrono::steady_clock::time_point deadline) {
  return state_->WaitForBatch(deadline);
}

std::unique_ptr<IntakeBatch> FileIntake::Take() { return state_->Take(); }

void FileIntake::GiveBack(std::unique_ptr<IntakeBatch> batch) {
  state_->GiveBack(std::move(batch));
}

bool FileIntake::AnnounceNext() { return state_->AnnounceNext(); }

}  // namespace app
