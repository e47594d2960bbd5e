// What the intake is still working on, for the flows that show progress and verdicts.
#pragma once

#include <cstddef>

namespace app {

struct OpenRequests {
  size_t paths = 0;          // requests for files and folders
  size_t checksumFiles = 0;  // requests for the files that a checksum file lists

  // Whether more rows may arrive.
  bool Any() const { return paths + checksumFiles > 0; }
};

}  // namespace app
