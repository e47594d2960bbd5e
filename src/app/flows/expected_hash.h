// The Expected hash box: what the pasted value is, whether the rows must be hashed further to find
// out, and what the result line says. With an empty box the line sums up a verification.
#pragma once

#include "app/desktop/clipboard.h"
#include "app/flows/banners.h"
#include "app/flows/hashing.h"
#include "app/flows/progress_display.h"
#include "app/rows/row_table.h"
#include "app/screen/expected_view.h"
#include "app/screen/list_view.h"

namespace app {

class ExpectedHash {
 public:
  // All must outlive the object.
  ExpectedHash(RowTable& rows, Hashing& hashing, ProgressDisplay& progress, Banners& banners,
               Clipboard& clipboard, ListView& list, ExpectedView& view);

  // Reads the box again, has the worker compute what is missing, and states the verdict. To be
  // called after every change of the rows.
  void Compare();
  // After a change of the box.
  void OnEdited();
  // Puts the clipboard's text into the box.
  void Paste();

 private:
  RowTable& rows_;
  Hashing& hashing_;
  ProgressDisplay& progress_;
  Banners& banners_;
  Clipboard& clipboard_;
  ListView& list_;
  ExpectedView& view_;
};

}  // namespace app
