#include "swr/hash/hash_file.h"

#include "swr/hash/file_hasher.h"

namespace swr {

HashOutcome HashFile(const std::u16string& path, AlgoMask mask, const HashOptions& options) {
  DigestThreads threads;
  return FileHasher(threads).HashFile(path, mask, options);
}

}  // namespace swr
