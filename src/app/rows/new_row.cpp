#include "app/rows/new_row.h"

#include <utility>

namespace app {

Row NewRow(IntakeFile&& file) {
  Row row;
  row.path = file.path;
  row.size = file.size;
  row.modified = file.modified;
  if (file.failed) {
    row.status = RowStatus::Failed;
    row.error = file.error;
  } else if (!file.lookedUp) {
    row.status = RowStatus::Cancelled;
    row.cancelledByUser = true;
  }
  if (file.listed) {
    row.hasExpected = true;
    RowExtras& extras = row.extras.Make();
    extras.expectedBytes = std::move(file.listed->digest);
    extras.expectedAlgos = std::move(file.listed->candidates);
    extras.checksumLine = file.listed->lineNumber;
  }
  return row;
}

}  // namespace app
