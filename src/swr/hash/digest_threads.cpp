#include "swr/hash/digest_threads.h"

#include <algorithm>
#include <utility>

#include "swr/system/thread_schedule.h"

namespace swr {

uint32_t DigestThreads::DefaultLimit() {
  static const uint32_t limit = std::max(2u, std::thread::hardware_concurrency());
  return limit;
}

DigestThreads::DigestThreads(uint32_t limit) : limit_(limit) {}

DigestThreads::~DigestThreads() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  wake_.notify_all();
  for (std::thread& thread : threads_) thread.join();
  for (std::thread& thread : endedThreads_) thread.join();
}

void DigestThreads::EndIdleThreads() {
  std::vector<std::thread> ended;
  {
    std::unique_lock lock(mutex_);
    toEnd_ = waiting_ - requests_.size();
    if (toEnd_ > 0) wake_.notify_all();
    ended_.wait(lock, [this] { return toEnd_ == 0; });
    ended = std::exchange(endedThreads_, {});
  }
  for (std::thread& thread : ended) thread.join();
}

bool DigestThreads::Lend(HelpedWork& work, size_t most) {
  if (!IsBelowLimit()) return false;
  const std::lock_guard lock(mutex_);
  if (!IsBelowLimit() || work.helpers_ >= most) return false;
  if (waiting_ == requests_.size() + toEnd_) {
    threads_.emplace_back([this] { ThreadMain(); });
    ++waiting_;
  }
  requests_.push_back(&work);
  ++work.helpers_;
  ++atWork_;
  wake_.notify_one();
  return true;
}

void DigestThreads::TakeBack(HelpedWork& work) {
  std::unique_lock lock(mutex_);
  // Requests that no thread has taken yet are withdrawn.
  const size_t withdrawn = std::erase(requests_, &work);
  work.helpers_ -= withdrawn;
  atWork_ -= static_cast<uint32_t>(withdrawn);
  returned_.wait(lock, [&] { return work.helpers_ == 0; });
}

void DigestThreads::ThreadMain() {
  PreferThroughput();
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return stop_ || !requests_.empty() || toEnd_ > 0; });
    if (stop_) return;
    if (requests_.empty()) {
      EndThisThread();
      return;
    }
    HelpedWork& work = *requests_.front();
    requests_.pop_front();
    --waiting_;
    lock.unlock();
    work.Help();
    lock.lock();
    ++waiting_;
    --atWork_;
    if (--work.helpers_ == 0) returned_.notify_all();
  }
}

// Under mutex_.
void DigestThreads::EndThisThread() {
  const auto self = std::ranges::find(threads_, std::this_thread::get_id(),
                                      [](const auto& t) { return t.get_id(); });
  endedThreads_.push_back(std::move(*self));
  threads_.erase(self);
  --waiting_;
  if (--toEnd_ == 0) ended_.notify_all();
}

}  // namespace swr
