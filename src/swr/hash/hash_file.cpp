#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "swr/hash/file_hasher.h"
#include "swr/hash/hasher.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/system/thread_schedule.h"

namespace swr {
namespace {

constexpr size_t RingLength = 4;

using HasherList = std::vector<std::unique_ptr<Hasher>>;

// One chunk of the file. While `pending` is 0 the reader owns it, otherwise the hashing threads do.
struct RingSlot {
  std::unique_ptr<std::byte[]> data;
  uint32_t capacity = 0;
  uint32_t length = 0;
  bool last = false;    // this chunk ended the file
  int32_t pending = 0;  // hashing threads that have yet to finish this chunk
};

// What the reader and the hashing threads share. Everything but the slots' contents and the hashers
// is touched under `mutex` only.
struct ConsumerContext {
  explicit ConsumerContext(HasherList& list) : hashers(list) {}

  std::mutex mutex;
  std::condition_variable chunkReady;  // all hashers want each chunk: notify all
  std::condition_variable slotFree;    // only the reader waits: notify one
  uint64_t published = 0;              // chunks handed to the hashing threads so far
  // No digest is wanted any more, of what was published either. Written under `mutex`.
  std::atomic<bool> stop = false;
  std::array<RingSlot, RingLength> slots;
  HasherList& hashers;
};

struct ChunkRead {
  bool reachedEnd = false;
  uint32_t error = 0;
};

void GiveBuffer(RingSlot& slot, uint32_t capacity) {
  slot.data = std::make_unique_for_overwrite<std::byte[]>(capacity);
  slot.capacity = capacity;
}

// Fills the slot until it is full or the file ends: a short read alone does not end the chunk, and
// a full chunk says nothing of the end yet.
ChunkRead ReadChunk(File& file, RingSlot& slot) {
  slot.length = 0;
  slot.last = false;
  while (slot.length < slot.capacity) {
    const ReadResult read = file.Read(slot.data.get() + slot.length, slot.capacity - slot.length);
    const bool endsLikeFile =
        !read.succeeded && (read.error == ErrorBrokenPipe || read.error == ErrorHandleEof);
    if (endsLikeFile || (read.succeeded && read.bytes == 0)) {
      slot.last = true;
      return {.reachedEnd = true};
    }
    if (!read.succeeded) {
      // A failure without a code can't be told to anybody; it passes for a full chunk.
      slot.last = read.error != 0;
      return {.error = read.error};
    }
    slot.length += read.bytes;
  }
  return {};
}

void Prefetch(const std::byte* data, uint32_t size) {
  constexpr uint32_t cacheLine = 64;
  // For reading, and no nearer than the second-level cache.
  for (uint32_t i = 0; i < size; i += cacheLine) __builtin_prefetch(data + i, 0, 2);
}

// Another core has written the chunk, and fetching it from there line by line would cost a fast
// algorithm a third of its speed. So each stretch is asked for while the one before is digested.
// The stretches are long enough for the widest variants of BLAKE3. A stop is seen between two of
// them: slow algorithms take long for a whole chunk.
void Update(Hasher& hasher, const RingSlot& slot, const std::atomic<bool>& stop) {
  constexpr uint32_t stretch = 16384;
  const std::byte* data = slot.data.get();
  uint32_t left = slot.length;
  while (left > 0 && !stop.load(std::memory_order_relaxed)) {
    const uint32_t size = std::min(left, stretch);
    left -= size;
    Prefetch(data + size, std::min(left, stretch));
    hasher.Update(data, size);
    data += size;
  }
}

void ConsumerMain(ConsumerContext& context, size_t index) {
  PreferThroughput();
  Hasher& hasher = *context.hashers[index];
  for (uint64_t i = 0;; ++i) {
    std::unique_lock lock(context.mutex);
    context.chunkReady.wait(lock, [&] { return context.published > i || context.stop; });
    if (context.stop) return;
    RingSlot& slot = context.slots[i % RingLength];
    lock.unlock();

    Update(hasher, slot, context.stop);
    const bool last = slot.last;

    lock.lock();
    if (--slot.pending == 0) context.slotFree.notify_one();
    lock.unlock();
    if (last) return;
  }
}

void Publish(ConsumerContext& context, RingSlot& slot) {
  {
    const std::lock_guard lock(context.mutex);
    slot.pending = static_cast<int32_t>(context.hashers.size());
    ++context.published;
  }
  context.chunkReady.notify_all();
}

void Stop(ConsumerContext& context) {
  {
    const std::lock_guard lock(context.mutex);
    context.stop = true;
  }
  context.chunkReady.notify_all();
}

bool IsCancelled(const HashOptions& options) {
  return options.cancel != nullptr && options.cancel->load(std::memory_order_relaxed);
}

void ReportProgress(const HashOptions& options, uint64_t bytesRead) {
  if (options.progress) options.progress(bytesRead);
}

// Reads the rest of the file behind the first chunk, which stands in slot 0 and is published.
void FillRing(File& file, ConsumerContext& context, const HashOptions& options,
              HashOutcome& outcome) {
  for (uint64_t s = 1;; ++s) {
    RingSlot& slot = context.slots[s % RingLength];
    {
      std::unique_lock lock(context.mutex);
      context.slotFree.wait(lock, [&] { return slot.pending == 0; });
    }
    if (IsCancelled(options)) {
      outcome.cancelled = true;
      break;
    }
    const ChunkRead read = ReadChunk(file, slot);
    if (read.error != 0) {
      outcome.error = read.error;
      break;
    }
    outcome.bytesRead += slot.length;
    const bool last = slot.last;
    Publish(context, slot);
    ReportProgress(options, outcome.bytesRead);
    if (last) return;
  }
  Stop(context);
}

void HashInParallel(File& file, ConsumerContext& context, const HashOptions& options,
                    HashOutcome& outcome) {
  for (size_t i = 1; i < RingLength; ++i) GiveBuffer(context.slots[i], options.chunkSize);
  std::vector<std::thread> threads;
  threads.reserve(context.hashers.size());
  for (size_t i = 0; i < context.hashers.size(); ++i) {
    threads.emplace_back(ConsumerMain, std::ref(context), i);
  }
  Publish(context, context.slots[0]);
  FillRing(file, context, options, outcome);
  for (std::thread& thread : threads) thread.join();
}

void CollectDigests(HasherList& hashers, const std::vector<AlgoId>& ids, HashOutcome& outcome) {
  for (size_t i = 0; i < hashers.size(); ++i) {
    DigestSlot& slot = outcome.digests.Make(IndexOf(ids[i]));
    static_cast<Digest&>(slot) = hashers[i]->Final();
    slot.present = true;
  }
}

// The buffer of the first chunk. A short file is not worth a whole chunk of memory; the one byte
// more is what lets its end show.
uint32_t FirstChunkSize(const std::optional<FileInfo>& info, uint32_t chunkSize) {
  if (!info || info->size >= chunkSize) return chunkSize;
  return static_cast<uint32_t>(info->size) + 1;
}

HashOutcome HashHandle(File& file, AlgoMask mask, const HashOptions& options,
                       uint32_t firstChunkSize) {
  HashOutcome outcome;
  const std::vector<AlgoId> ids = IdsFromMask(mask);
  HasherList hashers;
  try {
    for (const AlgoId id : ids) hashers.push_back(MakeHasher(id));
  } catch (const std::runtime_error&) {
    outcome.error = ErrorNotSupported;
    return outcome;
  }

  ConsumerContext context(hashers);
  RingSlot& first = context.slots[0];
  GiveBuffer(first, firstChunkSize);
  const ChunkRead read = ReadChunk(file, first);
  outcome.bytesRead = first.length;
  if (read.error != 0) {
    outcome.error = read.error;
    return outcome;
  }
  ReportProgress(options, outcome.bytesRead);
  if (IsCancelled(options)) {
    outcome.cancelled = true;
    return outcome;
  }

  if (read.reachedEnd) {
    for (const auto& hasher : hashers) hasher->Update(first.data.get(), first.length);
  } else if (hashers.empty()) {
    return outcome;
  } else {
    HashInParallel(file, context, options, outcome);
  }
  if (outcome.error == 0 && !outcome.cancelled) CollectDigests(hashers, ids, outcome);
  return outcome;
}

}  // namespace

HashOutcome HashFile(const std::u16string& path, AlgoMask mask, const HashOptions& options) {
  HashOutcome outcome;
  const std::u16string longPath = ToLongPath(path);
  File file;
  outcome.error = File::Open(longPath, FileSharing::Everything, file);
  if (outcome.error != 0) {
    if (outcome.error == ErrorAccessDenied && IsDirectoryPath(path)) {
      outcome.error = ErrorIsDirectory;
    }
    return outcome;
  }
  const std::optional<FileInfo> before = file.Info();
  if (before && before->isDirectory) {
    outcome.error = ErrorIsDirectory;
    return outcome;
  }

  outcome = HashHandle(file, mask, options, FirstChunkSize(before, options.chunkSize));

  if (outcome.error == 0 && !outcome.cancelled && before) {
    if (const std::optional<FileInfo> after = file.Info()) {
      outcome.changed = before->size != after->size || outcome.bytesRead != after->size ||
                        before->modified != after->modified;
    }
  }
  return outcome;
}

struct FileHasher::State {};

FileHasher::FileHasher(DigestThreads& /*threads*/) {}

FileHasher::~FileHasher() = default;

HashOutcome FileHasher::HashFile(const std::u16string& path, AlgoMask mask,
                                 const HashOptions& options) {
  return swr::HashFile(path, mask, options);
}

HashOutcome FileHasher::HashStream(File& file, AlgoMask mask, const HashOptions& options) {
  return HashHandle(file, mask, options, options.chunkSize);
}

void FileHasher::ReleaseMemory() {}

}  // namespace swr
