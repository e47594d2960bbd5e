// Removes rows from the list, and cancels work.
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

  // Ids may be repeated; those of removed rows are ignored.
  void RemoveRows(const RowIds& ids);
  void Clear();
  // Cancels all hashing and all file lookups. The rows are kept.
  void CancelAll();
  // Removes the first row of this path that has no expected digest from a checksum file. For a
  // checksum file that was added like any other file and is now being verified.
  void RemovePlainRow(const std::u16string& path);

 private:
  Uses uses_;
};

}  // namespace app
