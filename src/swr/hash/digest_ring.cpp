#include "swr/hash/digest_ring.h"

#include <algorithm>
#include <new>

#include "swr/hash/hash_file.h"
#include "swr/system/page_memory.h"

namespace swr {
namespace {

constexpr bool IsLarge(uint32_t capacity) { return capacity >= 65536; }

void Prefetch(const std::byte* data, uint32_t size) {
  constexpr uint32_t cacheLine = 64;
  // For reading, into the second-level cache.
  for (uint32_t i = 0; i < size; i += cacheLine) __builtin_prefetch(data + i, 0, 2);
}

// For a chunk that another core has written. Loading it from that core's cache line by line would
// cost a fast algorithm a third of its speed, so each piece is prefetched while the previous one is
// digested. The pieces should be short, because the processor can have only about a dozen
// prefetches outstanding.
bool DigestDistantChunk(Hasher& hasher, const Chunk& chunk, const std::atomic<bool>* stop) {
  const auto pieceSize = static_cast<uint32_t>(hasher.EfficientPiece());
  const std::byte* data = chunk.data.get();
  uint32_t left = chunk.length;
  while (left > 0) {
    if (stop != nullptr && stop->load(std::memory_order_relaxed)) return false;
    const uint32_t size = std::min(left, pieceSize);
    left -= size;
    Prefetch(data + size, std::min(left, pieceSize));
    hasher.Update(data, size);
    data += size;
  }
  return true;
}

}  // namespace

void ChunkDeleter::operator()(std::byte* data) const noexcept {
  if (IsLarge(capacity)) {
    FreePages(data, capacity);
  } else {
    delete[] data;
  }
}

void Chunk::Reserve(uint32_t size) {
  if (Capacity() >= size) return;
  // Doubled up to the default chunk size, so that a series of ever longer files does not need an
  // allocation for each.
  const uint32_t room = std::max(size, std::min(Capacity(), DefaultChunkSize / 2) * 2);
  data.reset();
  auto* bytes = IsLarge(room) ? static_cast<std::byte*>(AllocatePages(room)) : new std::byte[room];
  if (bytes == nullptr) throw std::bad_alloc();
  data = decltype(data)(bytes, ChunkDeleter{.capacity = room});
}

bool DigestChunk(Hasher& hasher, const Chunk& chunk, const std::atomic<bool>* stop) {
  constexpr uint32_t pieceSize = 131072;
  for (uint32_t done = 0; done < chunk.length; done += std::min(pieceSize, chunk.length - done)) {
    if (stop != nullptr && stop->load(std::memory_order_relaxed)) return false;
    hasher.Update(chunk.data.get() + done, std::min(pieceSize, chunk.length - done));
  }
  return true;
}

bool DigestRing::Start(std::span<Hasher* const> hashers, const std::atomic<bool>* cancel) {
  if (!threads_.IsBelowLimit()) return false;
  cancel_ = cancel;
  {
    const std::lock_guard lock(mutex_);
    feeds_.clear();
    for (Hasher* hasher : hashers) feeds_.push_back({.hasher = hasher});
    published_ = 0;
    isLastPublished_ = false;
    stop_ = false;
  }
  isRunning_ = threads_.Lend(*this, 1);
  return isRunning_;
}

// At most one thread for each hasher. When everything is read, the reader is one of them.
void DigestRing::AskForHelp() {
  const size_t most = feeds_.size() - (isLastPublished_ ? 1 : 0);
  while (threads_.Lend(*this, most)) {
  }
}

Chunk* DigestRing::NextFree() {
  std::unique_lock lock(mutex_);
  while (published_ - DigestedChunks() == Length) {
    // Helpers prefer the slowest hasher, which sets the pace and should never wait.
    Feed* feed = FindWork(false);
    if (feed == nullptr) {
      WaitAsReader(lock);
    } else if (!DigestNext(*feed, lock, cancel_)) {
      return nullptr;
    }
  }
  return &chunks_[published_ % Length];
}

void DigestRing::Publish() {
  {
    const std::lock_guard lock(mutex_);
    isLastPublished_ = chunks_[published_ % Length].last;
    ++published_;
    if (waitingHelpers_ > 0) helperWake_.notify_all();
  }
  if (threads_.IsBelowLimit()) AskForHelp();
}

void DigestRing::Finish() {
  {
    std::unique_lock lock(mutex_);
    while (DigestedChunks() < published_) {
      if (Feed* feed = FindWork(false)) {
        DigestNext(*feed, lock, nullptr);
      } else {
        WaitAsReader(lock);
      }
    }
  }
  threads_.TakeBack(*this);
  isRunning_ = false;
}

void DigestRing::Stop() {
  if (!isRunning_) return;
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
    helperWake_.notify_all();
  }
  threads_.TakeBack(*this);
  isRunning_ = false;
}

void DigestRing::ReleaseMemory() {
  for (Chunk& chunk : chunks_) chunk = {};
}

void DigestRing::Help() {
  std::unique_lock lock(mutex_);
  while (!stop_ && !threads_.IsAboveLimit()) {
    if (Feed* feed = FindWork(true)) {
      DigestNext(*feed, lock, &stop_);
    } else if (isLastPublished_) {
      return;
    } else {
      ++waitingHelpers_;
      helperWake_.wait(lock);
      --waitingHelpers_;
    }
  }
  // Another thread can take over the remaining work.
  WakeThreadForWork();
}

// The hasher that is furthest behind and has a chunk to digest. Of several, the slowest if
// `slowestFirst`, otherwise the fastest.
DigestRing::Feed* DigestRing::FindWork(bool slowestFirst) {
  Feed* found = nullptr;
  for (Feed& feed : feeds_) {
    if (feed.isBusy || feed.next == published_) continue;
    const bool isBetter =
        found == nullptr || feed.next < found->next || (!slowestFirst && feed.next == found->next);
    if (isBetter) found = &feed;
  }
  return found;
}

// How many chunks all hashers have finished.
uint64_t DigestRing::DigestedChunks() const {
  return std::ranges::min_element(feeds_, {}, &Feed::next)->next;
}

bool DigestRing::DigestNext(Feed& feed, std::unique_lock<std::mutex>& lock,
                            const std::atomic<bool>* stop) {
  feed.isBusy = true;
  WakeThreadForWork();
  const Chunk& chunk = chunks_[feed.next % Length];
  lock.unlock();
  const bool isDigested = DigestDistantChunk(*feed.hasher, chunk, stop);
  lock.lock();
  const uint64_t digestedBefore = DigestedChunks();
  feed.isBusy = false;
  ++feed.next;
  if (readerWaits_ && DigestedChunks() != digestedBefore) readerWake_.notify_one();
  return isDigested;
}

void DigestRing::WaitAsReader(std::unique_lock<std::mutex>& lock) {
  readerWaits_ = true;
  readerWake_.wait(lock);
  readerWaits_ = false;
}

// Called by a thread that has taken some work or leaves: if there is more, wakes another thread.
void DigestRing::WakeThreadForWork() {
  if (waitingHelpers_ == 0 && !readerWaits_) return;
  if (FindWork(true) == nullptr) return;
  if (waitingHelpers_ > 0) {
    helperWake_.notify_one();
  } else {
    readerWake_.notify_one();
  }
}

}  // namespace swr
