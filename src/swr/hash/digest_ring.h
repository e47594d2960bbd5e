// A ring of chunks of one file, which one thread fills while others digest them.
//
// Every hasher gets every chunk, in order, but not always on the same thread: a thread that is free
// takes the hasher that is furthest behind. So any number of threads can serve any number of
// hashers. The reading thread digests too while the ring is full.
#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "swr/hash/digest_threads.h"
#include "swr/hash/hasher.h"

namespace swr {

// Frees the memory of a chunk. Short chunks come from the heap, long ones directly from the system,
// because the heap may keep freed memory.
struct ChunkDeleter {
  uint32_t capacity = 0;
  void operator()(std::byte* data) const noexcept;
};

// Bytes of a file, in memory that is kept from file to file.
struct Chunk {
  std::unique_ptr<std::byte[], ChunkDeleter> data;
  uint32_t length = 0;
  bool last = false;  // the file ends with this chunk

  uint32_t Capacity() const { return data == nullptr ? 0 : data.get_deleter().capacity; }
  // Makes room for `size` bytes. If the memory has to grow, its content is lost.
  void Reserve(uint32_t size);
};

// Feeds the chunk to the hasher. `stop` may be null; if it becomes true meanwhile, the result is
// false and the hasher has seen only part of the chunk.
bool DigestChunk(Hasher& hasher, const Chunk& chunk, const std::atomic<bool>* stop);

// All public functions are called on one thread, the reader. A run lasts from Start to Finish or
// Stop.
class DigestRing final : public HelpedWork {
 public:
  static constexpr size_t Length = 4;

  // `threads` must outlive the ring.
  explicit DigestRing(DigestThreads& threads) : threads_(threads) {}

  // Starts a run if a thread can be lent for it, and returns whether it has. `hashers` has at least
  // one entry and begins with the slowest. `cancel` may be null; it is checked while the reader
  // digests. The first chunk may be filled before or after this call, and is then published.
  bool Start(std::span<Hasher* const> hashers, const std::atomic<bool>* cancel);
  bool IsRunning() const { return isRunning_; }
  Chunk& First() { return chunks_[0]; }

  // Waits until all hashers have finished with the next chunk, digesting meanwhile, and returns it
  // to be filled. Null if `cancel` became true.
  Chunk* NextFree();
  // Hands that chunk, or the first one, to the hashers.
  void Publish();

  // To be called after the last chunk is published. Returns when everything is digested.
  void Finish();
  // Ends the run early; the hashers have then seen only part of the file. Does nothing if there is
  // no run.
  void Stop();

  // Frees the memory of the chunks. Not to be called during a run.
  void ReleaseMemory();

 private:
  struct Feed {
    Hasher* hasher;
    uint64_t next = 0;  // number of the chunk that it gets next
    bool isBusy = false;
  };

  void Help() override;
  void AskForHelp();
  // The next four are called under mutex_.
  Feed* FindWork(bool slowestFirst);
  uint64_t DigestedChunks() const;
  // Unlocks the mutex while it digests. False if `stop` became true.
  bool DigestNext(Feed& feed, std::unique_lock<std::mutex>& lock, const std::atomic<bool>* stop);
  void WaitAsReader(std::unique_lock<std::mutex>& lock);
  void WakeThreadForWork();

  DigestThreads& threads_;
  std::array<Chunk, Length> chunks_;
  const std::atomic<bool>* cancel_ = nullptr;
  bool isRunning_ = false;

  std::mutex mutex_;
  std::condition_variable helperWake_;
  std::condition_variable readerWake_;
  // The rest is under mutex_.
  std::vector<Feed> feeds_;
  uint64_t published_ = 0;
  bool isLastPublished_ = false;
  size_t waitingHelpers_ = 0;
  bool readerWaits_ = false;
  std::atomic<bool> stop_ = false;  // written under mutex_, also read without it
};

}  // namespace swr
