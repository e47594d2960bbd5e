// Handles the worker's reports.
#pragma once

#include <memory>
#include <vector>

#include "app/desktop/shell.h"
#include "app/flows/details_pane.h"
#include "app/flows/expected_hash.h"
#include "app/flows/file_comparison.h"
#include "app/flows/hashing.h"
#include "app/flows/look_up.h"
#include "app/flows/open_requests.h"
#include "app/flows/progress_display.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"
#include "app/worker/worker.h"

namespace app {

class JobIntake {
 public:
  // All must outlive the object.
  struct Uses {
    RowTable& rows;
    const Selection& selection;
    Hashing& hashing;
    const OpenRequests& open;
    ExpectedHash& expected;
    DetailsPane& details;
    ProgressDisplay& progress;
    LookUp& lookUp;
    FileComparison& comparison;
    ListView& list;
    Shell& shell;
  };
  explicit JobIntake(const Uses& uses) : uses_(uses) {}

  // Puts the results of finished jobs into their rows; those of removed rows are dropped.
  void Take(std::vector<std::unique_ptr<FinishedJob>> jobs);
  // To be called at each tick of the progress timer.
  void OnTimer();

 private:
  void TakeOne(FinishedJob& job);

  Uses uses_;
};

}  // namespace app
