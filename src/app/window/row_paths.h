// Finds the rows of a path among many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "app/window/list_tally.h"

namespace app {

// Made at the first search after a change, which costs a walk over the list; a search costs next to
// nothing.
class RowPaths {
 public:
  // The rows must outlive the object.
  explicit RowPaths(const RowList& rows) : rows_(rows) {}

  // To be called after rows were added, have gone or changed places.
  void Forget() { isMade_ = false; }
  // Calls `found` with the index of each row whose path is EqualsNoCase, ascending. Empty places of
  // the list are passed over.
  void Find(const std::u16string& path, const std::function<void(size_t)>& found);

 private:
  struct Entry {
    uint64_t hash = 0;  // CaseHash of the path
    size_t index = 0;

    auto operator<=>(const Entry&) const = default;
  };

  void Make();

  const RowList& rows_;
  std::vector<Entry> entries_;  // sorted
  bool isMade_ = false;
};

}  // namespace app
