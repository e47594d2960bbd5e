// The texts and progress figures of the status line.
#pragma once

#include <cstdint>
#include <string>

#include "app/worker/hash_queue.h"

namespace app {

struct ProgressFigures {
  uint32_t position = 0;  // of 10000
  uint64_t doneBytes = 0;
  uint64_t totalBytes = 0;  // never 0
};

// "3 files, 1.2 MB"; empty for an empty list.
std::u16string IdleLine(size_t rowCount, uint64_t totalSize);

// The same while files are being looked up and none is being hashed: "Looking up files... 3 files,
// 1.2 MB so far".
std::u16string LookingUpLine(size_t rowCount, uint64_t totalSize);

// "Hashing name (42%), 7 more, 310 MB/s, 1:05 left", with as much as is known.
std::u16string RunningLine(const WorkerSnapshot& snapshot);

ProgressFigures FiguresOf(const WorkerSnapshot& snapshot);

}  // namespace app
