// Finds the files in the folders of checksum lists that no list names, and which of them are
// missing files that were moved.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "cli/modes/run.h"
#include "swr/hash/algorithms.h"

namespace cli {

class ExtraFiles {
 public:
  explicit ExtraFiles(Run& run) : run_(run) {}

  // Add a list, which is not an extra file itself, and a file that it names. Called on one thread.
  void AddList(const std::u16string& listPath);
  void AddListed(const std::u16string& path);
  // Adds a listed file that does not exist, by its name in the list. Called by one thread at a
  // time, which need not be the one that adds the lists.
  void AddMissing(const std::u16string& name, std::vector<uint8_t> digest,
                  std::vector<swr::AlgoId> candidates);

  // Walks the lists' folders and reports the extra files. Called after everything was added.
  void Find();
  // " 2 extra files, 1 of them moved." with a leading space; empty when there are none.
  std::u16string Summary() const;

 private:
  class ExtraJob;

  // The number of the algorithm followed by the bytes of the digest.
  static std::string KeyOf(swr::AlgoId algo, std::string_view digest);

  Run& run_;
  std::vector<std::u16string> folders_;
  std::unordered_set<std::u16string> listed_;                // by PathIdentity
  std::unordered_map<std::string, std::u16string> missing_;  // names by KeyOf
  swr::AlgoMask missingAlgorithms_ = 0;
  size_t found_ = 0;
  size_t moved_ = 0;
};

}  // namespace cli
