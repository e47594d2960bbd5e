// The folder of the files with expected results.
#pragma once

#include <cstdlib>
#include <string>

namespace swr::testing {

// The environment variable SUMWRIGHT_TEST_DATA, for tests that run on a different machine from the
// one that built them; otherwise the folder of the sources.
inline std::string TestDataFolder(const char* folderOfSources) {
  const char* const moved = std::getenv("SUMWRIGHT_TEST_DATA");
  return moved == nullptr ? folderOfSources : moved;
}

}  // namespace swr::testing
