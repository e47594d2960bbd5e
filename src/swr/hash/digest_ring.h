// A ring of chunks of one file, which one thread fills while others digest them.
//
// Each chunk goes to every hasher, and each hasher takes the chunks in order; which thread feeds it
// the next one does not matter. So any number of threads can work on any number of hashers: whoever
// is free takes the hasher that is furthest behind. The reading thread does the same while there is
// no room to read ahead.
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

// Frees the memory of a chunk. Short ones come from the heap. Large ones do not, because the heap
// may keep what it gets back.
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
  // Makes room for `size` bytes. If there was less before, the bytes are lost.
  void Reserve(uint32_t size);
};

// Feeds the chunk to the hasher. Returns false, with the hasher's digest spoilt, when `stop`, which
// may be null, becomes true meanwhile.
bool DigestChunk(Hasher& hasher, const Chunk& chunk, const std::atomic<bool>* stop);

// All public functions belong to one thread, the reader. A run goes from Start to Finish or Stop.
class DigestRing final : public HelpedWork {
 public:
  static constexpr size_t Length = 4;

  // `threads` must outlive the ring.
  explicit DigestRing(DigestThreads& threads) : threads_(threads) {}

  // Starts a run unless no thread can be lent for it. `hashers`, at least one, begins with the
  // slowest. `cancel`, which may be null, is looked at while the reader digests. The first chunk
  // may be filled before or afterwards, and is then published.
  bool Start(std::span<Hasher* const> hashers, const std::atomic<bool>* cancel);
  bool IsRunning() const { return isRunning_; }
  Chunk& First() { return chunks_[0]; }

  // The next chunk to fill, once all hashers have left it; until then the reader digests too. Null
  // when `cancel` was seen.
  Chunk* NextFree();
  // Hands that chunk, or the first one, to the hashers.
  void Publish();

  // Called once the last chunk is published. Returns when all is digested.
  void Finish();
  // Ends the run early and leaves the digests spoilt. Without effect when there is no run.
  void Stop();

  // Frees the memory of the chunks. Not during a run.
  void ReleaseMemory();

 private:
  struct Feed {
    Hasher* hasher;
    uint64_t next = 0;  // number of the chunk that it takes next
    bool isBusy = false;
  };

  void Help() override;
  void AskForHelp();
  // The others under mutex_.
  Feed* FindWork(bool slowestFirst);
  uint64_t DigestedChunks() const;
  // Unlocks meanwhile. False when `stop` became true.
  bool DigestNext(Feed& feed, std::unique_lock<std::mutex>& lock, const std::atomic<bool>* stop);
  void WaitAsReader(std::unique_lock<std::mutex>& lock);
  void WakeSomebodyForWork();

  DigestThreads& threads_;
  std::array<Chunk, Length> chunks_;
  const std::atomic<bool>* cancel_ = nullptr;
  bool isRunning_ = false;

  std::mutex mutex_;
  std::condition_variable helperWake_;
  std::condition_variable readerWake_;
  // From here on: under mutex_.
  std::vector<Feed> feeds_;
  uint64_t published_ = 0;
  bool isLastPublished_ = false;
  size_t waitingHelpers_ = 0;
  bool readerWaits_ = false;
  std::atomic<bool> stop_ = false;  // written under mutex_, read without it too
};

}  // namespace swr
