// Saving checksums: which rows and algorithms can be saved, the formats that this allows, and the
// file.
#pragma once

#include "app/desktop/messages.h"
#include "app/desktop/pickers.h"
#include "app/flows/options.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"

namespace app {

class Saving {
 public:
  // All must outlive the object.
  Saving(const RowTable& rows, const Options& options, Pickers& pickers, Messages& messages)
      : rows_(rows), options_(options), pickers_(pickers), messages_(messages) {}

  // Saves the finished rows among several selected ones, or else all finished rows, to a file that
  // the user picks. Rows that finish while the user picks are not among them.
  void Save(const RowIds& selection);

 private:
  const RowTable& rows_;
  const Options& options_;
  Pickers& pickers_;
  Messages& messages_;
};

}  // namespace app
