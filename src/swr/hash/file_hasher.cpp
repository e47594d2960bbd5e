#include "swr/hash/file_hasher.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

#include "swr/hash/digest_ring.h"
#include "swr/hash/hasher.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"

namespace swr {
namespace {

// Nanoseconds per KiB on a current processor, measured with bench/hasher_benchmark. They decide
// which hasher is the slowest and whether help pays off; rough ratios are enough for that.
constexpr std::array<uint32_t, AlgoCount> digestCosts = {
    40,     // CRC32
    1400,   // MD5
    500,    // SHA-1
    600,    // SHA-256
    1400,   // SHA-384
    1400,   // SHA-512
    1700,   // SHA3-256
    2100,   // SHA3-384
    3200,   // SHA3-512
    140,    // BLAKE3
    75,     // XXH64
    20,     // XXH3-64
    20,     // XXH128
    85000,  // MD2
    780,    // MD4
};
constexpr uint32_t readCost = 100;  // the same, for copying from the system's file cache

// What the algorithms of a mask cost, and whether help from a second thread pays off.
struct Workload {
  uint32_t total = 0;
  uint32_t slowest = 0;

  // For a file of one chunk, which has been read: the hashers are divided between two threads.
  bool IsHelpWorthwhileForOneChunk(uint32_t length) const {
    constexpr uint64_t costOfHelp = 100'000;  // ns: to wake a thread and to wait for it
    const uint64_t saved = total - std::max(slowest, total / 2);
    return saved * length / 1024 > costOfHelp;
  }
  // For a longer file, which is read at the same time. The bytes then move from core to core, which
  // costs a fast algorithm more than it gains.
  bool IsHelpWorthwhileForMany() const {
    constexpr uint32_t moveCost = 40;
    const uint32_t all = total + readCost;
    return all - std::max({slowest, readCost, all / 2}) > moveCost;
  }
};

// Reads until the chunk holds `size` bytes or the file ends. A short read does not end the chunk,
// and a full chunk is not marked as the last one even if the file ends there. Returns an error
// code.
uint32_t ReadChunk(File& file, Chunk& chunk, uint32_t size) {
  chunk.Reserve(size);
  chunk.length = 0;
  chunk.last = false;
  while (chunk.length < size) {
    const ReadResult read = file.Read(chunk.data.get() + chunk.length, size - chunk.length);
    // A failure without a code can't be reported; the chunk is treated as full.
    if (!read.succeeded && read.error != ErrorBrokenPipe && read.error != ErrorHandleEof) {
      return read.error;
    }
    if (!read.succeeded || read.bytes == 0) {
      chunk.last = true;
      return 0;
    }
    chunk.length += read.bytes;
  }
  return 0;
}

bool IsCancelled(const HashOptions& options) {
  return options.cancel != nullptr && options.cancel->load(std::memory_order_relaxed);
}

void ReportProgress(const HashOptions& options, uint64_t bytesRead) {
  if (options.progress) options.progress(bytesRead);
}

// A short file does not need the memory of a whole chunk. The extra byte lets the first read also
// find the end of the file.
uint32_t FirstChunkSize(const std::optional<FileInfo>& info, uint32_t chunkSize) {
  if (!info || info->size >= chunkSize) return chunkSize;
  return static_cast<uint32_t>(info->size) + 1;
}

}  // namespace

struct FileHasher::State {
  explicit State(DigestThreads& sharedThreads) : threads(sharedThreads), ring(sharedThreads) {}

  void SetMask(AlgoMask newMask);
  bool PrepareHashers();
  HashOutcome Hash(File& file, AlgoMask newMask, const HashOptions& options,
                   const std::optional<FileInfo>& info);
  void DigestFromFirst(File& file, const HashOptions& options, uint32_t chunkSize,
                       HashOutcome& outcome);
  bool ReadNext(File& file, Chunk& chunk, uint32_t chunkSize, const HashOptions& options,
                HashOutcome& outcome);
  bool StartRing(const HashOptions& options);
  void FillRing(File& file, const HashOptions& options, uint32_t chunkSize, HashOutcome& outcome);
  void CollectDigests(HashOutcome& outcome);

  DigestThreads& threads;
  DigestRing ring;
  std::array<std::unique_ptr<Hasher>, AlgoCount> hashers;  // those needed so far
  AlgoMask mask = 0;                                       // of the current or previous file
  std::vector<AlgoId> ids;                                 // of the mask
  std::vector<AlgoId> slowestFirst;                        // of the mask, ordered by cost
  Workload workload;                                       // of the mask
};

void FileHasher::State::SetMask(AlgoMask newMask) {
  if (newMask == mask) return;
  mask = newMask;
  ids = IdsFromMask(mask);
  workload = {};
  for (const AlgoId id : ids) {
    const uint32_t cost = digestCosts[IndexOf(id)];
    workload.total += cost;
    workload.slowest = std::max(workload.slowest, cost);
  }
  slowestFirst = ids;
  std::ranges::stable_sort(slowestFirst, std::greater(),
                           [](AlgoId id) { return digestCosts[IndexOf(id)]; });
}

// False when the provider can't serve one of the algorithms.
bool FileHasher::State::PrepareHashers() {
  for (const AlgoId id : ids) {
    std::unique_ptr<Hasher>& hasher = hashers[IndexOf(id)];
    try {
      if (hasher == nullptr) {
        hasher = MakeHasher(id);
      } else {
        hasher->Reset();
      }
    } catch (const std::runtime_error&) {
      hasher = nullptr;
      return false;
    }
  }
  return true;
}

HashOutcome FileHasher::State::Hash(File& file, AlgoMask newMask, const HashOptions& options,
                                    const std::optional<FileInfo>& info) {
  HashOutcome outcome;
  SetMask(newMask);
  if (!PrepareHashers()) {
    outcome.error = ErrorNotSupported;
    return outcome;
  }
  const DigestThreads::CallerAtWork atWork(threads);
  const uint32_t chunkSize = options.chunkSize != 0 ? options.chunkSize : DefaultChunkSize;
  // No other thread uses the hashers after this function, even if it throws.
  struct EndOfRun {
    DigestRing& ring;
    ~EndOfRun() { ring.Stop(); }
  } const endOfRun{ring};
  // A thread that is woken now will be ready by the time the first chunk is.
  if (info && info->size >= chunkSize && workload.IsHelpWorthwhileForMany()) StartRing(options);

  Chunk& chunk = ring.First();
  outcome.error = ReadChunk(file, chunk, FirstChunkSize(info, chunkSize));
  outcome.bytesRead = chunk.length;
  if (outcome.error != 0) return outcome;
  ReportProgress(options, outcome.bytesRead);
  if (IsCancelled(options)) {
    outcome.cancelled = true;
    return outcome;
  }
  if (ids.empty()) return outcome;
  DigestFromFirst(file, options, chunkSize, outcome);
  if (outcome.error == 0 && !outcome.cancelled) CollectDigests(outcome);
  return outcome;
}

// Call when the ring's first chunk has been read. Digests it and the rest of the file; switches to
// the ring as soon as a thread can be lent.
void FileHasher::State::DigestFromFirst(File& file, const HashOptions& options, uint32_t chunkSize,
                                        HashOutcome& outcome) {
  Chunk& chunk = ring.First();
  while (true) {
    const bool isHelpWorthwhile = chunk.last ? workload.IsHelpWorthwhileForOneChunk(chunk.length)
                                             : workload.IsHelpWorthwhileForMany();
    if (ring.IsRunning() || (isHelpWorthwhile && StartRing(options))) {
      ring.Publish();
      FillRing(file, options, chunkSize, outcome);
      return;
    }
    const std::atomic<bool>* cancel = chunk.last ? nullptr : options.cancel;
    for (const AlgoId id : ids) {
      if (!DigestChunk(*hashers[IndexOf(id)], chunk, cancel)) outcome.cancelled = true;
    }
    if (chunk.last || !ReadNext(file, chunk, chunkSize, options, outcome)) return;
    ReportProgress(options, outcome.bytesRead);
  }
}

bool FileHasher::State::StartRing(const HashOptions& options) {
  if (!threads.IsBelowLimit()) return false;
  std::array<Hasher*, AlgoCount> ordered;
  std::ranges::transform(slowestFirst, ordered.begin(),
                         [this](AlgoId id) { return hashers[IndexOf(id)].get(); });
  return ring.Start(std::span(ordered).first(slowestFirst.size()), options.cancel);
}

// Reads the rest of the file. The first chunk has been published.
void FileHasher::State::FillRing(File& file, const HashOptions& options, uint32_t chunkSize,
                                 HashOutcome& outcome) {
  bool isLast = ring.First().last;
  while (!isLast) {
    Chunk* chunk = ring.NextFree();
    if (chunk == nullptr) outcome.cancelled = true;
    if (outcome.cancelled || !ReadNext(file, *chunk, chunkSize, options, outcome)) return;
    isLast = chunk->last;
    ring.Publish();
    ReportProgress(options, outcome.bytesRead);
  }
  ring.Finish();
}

// False when the run ends here, cancelled or failed.
bool FileHasher::State::ReadNext(File& file, Chunk& chunk, uint32_t chunkSize,
                                 const HashOptions& options, HashOutcome& outcome) {
  if (outcome.cancelled || IsCancelled(options)) {
    outcome.cancelled = true;
    return false;
  }
  outcome.error = ReadChunk(file, chunk, chunkSize);
  if (outcome.error != 0) return false;
  outcome.bytesRead += chunk.length;
  return true;
}

void FileHasher::State::CollectDigests(HashOutcome& outcome) {
  outcome.digests.Reserve(ids.size());
  for (const AlgoId id : ids) {
    DigestSlot& slot = outcome.digests.Make(IndexOf(id));
    static_cast<Digest&>(slot) = hashers[IndexOf(id)]->Final();
    slot.present = true;
  }
}

FileHasher::FileHasher(DigestThreads& threads) : state_(std::make_unique<State>(threads)) {}

FileHasher::~FileHasher() = default;

HashOutcome FileHasher::HashFile(const std::u16string& path, AlgoMask mask,
                                 const HashOptions& options) {
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
  const std::optional<FileInfo> before = file.InfoAtOpening();
  if (before && before->isDirectory) {
    outcome.error = ErrorIsDirectory;
    return outcome;
  }

  outcome = state_->Hash(file, mask, options, before);

  if (outcome.error == 0 && !outcome.cancelled && before) {
    if (const std::optional<FileInfo> after = file.Info()) {
      outcome.changed = before->size != after->size || outcome.bytesRead != after->size ||
                        before->modified != after->modified;
    }
  }
  return outcome;
}

HashOutcome FileHasher::HashStream(File& file, AlgoMask mask, const HashOptions& options) {
  return state_->Hash(file, mask, options, std::nullopt);
}

void FileHasher::ReleaseMemory() {
  state_->ring.ReleaseMemory();
  for (std::unique_ptr<Hasher>& hasher : state_->hashers) hasher = nullptr;
}

}  // namespace swr
