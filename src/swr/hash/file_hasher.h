// Hashes one file after another and keeps what the next file can use: buffers, hashers and, through
// DigestThreads, threads. A front end keeps one FileHasher for each thread that hashes files.
#pragma once

#include <memory>
#include <string>

#include "swr/hash/digest_threads.h"
#include "swr/hash/hash_file.h"
#include "swr/system/file.h"

namespace swr {

// Used by one thread at a time.
class FileHasher {
 public:
  // `threads` must outlive this object. Any number of FileHashers can share it.
  explicit FileHasher(DigestThreads& threads);
  ~FileHasher();
  FileHasher(const FileHasher&) = delete;
  FileHasher& operator=(const FileHasher&) = delete;

  // As swr::HashFile.
  HashOutcome HashFile(const std::u16string& path, AlgoMask mask, const HashOptions& options);

  // Reads `file` from where it stands to its end; it can be a pipe. The outcome is that of
  // HashFile, except that `changed` is never set. A read that waits for data does not see a cancel.
  HashOutcome HashStream(File& file, AlgoMask mask, const HashOptions& options);

  // Frees the buffers and the hashers that are kept for the next file: at most about 5 MiB.
  void ReleaseMemory();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace swr
