// Looks the selected file up on the web by its digest.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/desktop/shell.h"
#include "app/flows/hashing.h"
#include "app/flows/progress_display.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

class LookUp {
 public:
  // All must outlive the object.
  LookUp(RowTable& rows, Hashing& hashing, ProgressDisplay& progress, ListView& list, Shell& shell);

  // Opens the page of the one selected row, as soon as its digest is known. A request that has to
  // wait replaces an earlier one that is still waiting. Does nothing for any other number of rows.
  void Start(const RowIds& selection);
  // Whether the lookup of this row is waiting for its digest.
  bool WaitsFor(uint64_t rowId) const { return waitsFor_ == rowId; }
  bool IsWaiting() const { return waitsFor_.has_value(); }
  // Call after each result for the row of a waiting lookup, before more is queued for it. Returns
  // the address of the page to open now, if any.
  std::optional<std::u16string> Finish();
  void Forget() { waitsFor_.reset(); }

 private:
  RowTable& rows_;
  Hashing& hashing_;
  ProgressDisplay& progress_;
  ListView& list_;
  Shell& shell_;
  std::optional<uint64_t> waitsFor_;
};

}  // namespace app
