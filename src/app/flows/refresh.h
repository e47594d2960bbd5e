// The updates that follow every change of the rows.
#pragma once

#include "app/flows/details_pane.h"
#include "app/flows/expected_hash.h"
#include "app/flows/progress_display.h"

namespace app {

class Refresh {
 public:
  // All must outlive the object.
  Refresh(ExpectedHash& expected, DetailsPane& details, ProgressDisplay& progress)
      : expected_(expected), details_(details), progress_(progress) {}

  // Brings the result line, the details and the status line up to date, in this order.
  void AfterRowChange() {
    expected_.Compare();
    details_.Refresh();
    progress_.Update();
  }

 private:
  ExpectedHash& expected_;
  DetailsPane& details_;
  ProgressDisplay& progress_;
};

}  // namespace app
