// The Copy commands.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "app/desktop/clipboard.h"
#include "app/flows/options.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/verdicts/copied_text.h"
#include "swr/hash/algorithms.h"

namespace app {

// Each works on the rows it is given; see copied_text.h for the texts. Without rows the clipboard
// is not changed.
class Copying {
 public:
  // All must outlive the object.
  Copying(const RowTable& rows, const Options& options, Clipboard& clipboard)
      : rows_(rows), options_(options), clipboard_(clipboard) {}

  // The selected algorithms' digests.
  void CopyHashes(const RowIds& selection);
  // Without an algorithm that all rows have, the clipboard is not changed.
  void CopyLines(const RowIds& selection);
  void CopyAllHashes(const RowIds& selection);
  void CopyPaths(const RowIds& selection);
  // One digest of one row.
  void CopyDigest(uint64_t rowId, swr::AlgoId algo);

 private:
  // Copies the texts of some rows each, one after the other.
  void CopyInParts(CopiedRows rows, const std::function<std::u16string(CopiedRows)>& textOf);

  const RowTable& rows_;
  const Options& options_;
  Clipboard& clipboard_;
};

}  // namespace app
