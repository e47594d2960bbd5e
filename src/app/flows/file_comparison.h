// Tells the user whether two files have the same content: by their sizes if these differ, otherwise
// by SHA-256, independently of the selected algorithms.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "app/desktop/messages.h"
#include "app/flows/expected_hash.h"
#include "app/flows/hashing.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

class FileComparison {
 public:
  // All must outlive the object.
  FileComparison(RowTable& rows, Hashing& hashing, ExpectedHash& expected, ListView& list,
                 Messages& messages);

  // Compares the two selected rows and shows the answer in a message, as soon as their digests are
  // known. A request that has to wait replaces an earlier one that is still waiting. Does nothing
  // for any other number of rows.
  void Start(const RowIds& selection);
  // Answers if both digests are known now. Call after every result.
  void Finish();
  bool IsWaiting() const { return waitsFor_.has_value(); }
  void Forget() { waitsFor_.reset(); }

 private:
  RowTable& rows_;
  Hashing& hashing_;
  ExpectedHash& expected_;
  ListView& list_;
  Messages& messages_;
  std::optional<std::pair<uint64_t, uint64_t>> waitsFor_;
};

}  // namespace app
