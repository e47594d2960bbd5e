// Takes rows out of the list, and work away from the worker.
#pragma once

#include <string>

#include "app/flows/banners.h"
#include "app/flows/expected_hash.h"
#include "app/flows/file_arrivals.h"
#include "app/flows/file_comparison.h"
#include "app/flows/hashing.h"
#include "app/flows/look_up.h"
#include "app/flows/progress_display.h"
#include "app/flows/refresh.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

class ListEdits {
 public:
  // All must outlive the object.
  struct Uses {
    RowTable& rows;
    Hashing& hashing;
    FileArrivals& arrivals;
    FileComparison& comparison;
    LookUp& lookUp;
    Banners& banners;
    ExpectedHash& expected;
    ProgressDisplay& progress;
    Refresh& refresh;
    ListView& list;
  };
  explicit ListEdits(const Uses& uses) : uses_(uses) {}

  // An id may come twice; one whose row is gone does nothing.
  void RemoveRows(const RowIds& ids);
  void Clear();
  // Stops all hashing and looking up. The rows stay.
  void CancelAll();
  // Removes the first row of this path that no checksum file expects anything of. A checksum file
  // that was added is in the list like any file; once it is opened, its own row goes.
  void RemovePlainRow(const std::u16string& path);

 private:
  Uses uses_;
};

}  // namespace app
