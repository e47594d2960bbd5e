// Hashes one file after another and keeps what the next file can use: buffers, hashers and, through
// DigestThreads, threads. A front end keeps one FileHasher for each thread that hashes files.
//
// The calling thread reads the file. It also digests it if the file is short, if the algorithms are
// as fast as the reading or if all cores are busy. Otherwise other threads digest each chunk while
// the next ones are read, so that the slowest algorithm sets the pace.
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

  // Reads `file` from its current position to its end; it can be a pipe. The outcome is that of
  // HashFile, except that `changed` is never set. A cancel is not noticed while a read waits for
  // data.
  HashOutcome HashStream(File& file, AlgoMask mask, const HashOptions& options);

  // Frees the hashers and the buffers, which are at most four chunks.
  void ReleaseMemory();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace swr
