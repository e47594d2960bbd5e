// The Expected hash box: parses its value, compares the rows with it, queues the candidates that
// they lack, and sets the result line. With an empty box the line sums up a verification.
#pragma once

#include "app/desktop/clipboard.h"
#include "app/flows/banners.h"
#include "app/flows/hashing.h"
#include "app/flows/open_requests.h"
#include "app/flows/progress_display.h"
#include "app/rows/row_table.h"
#include "app/screen/expected_view.h"
#include "app/screen/list_view.h"

namespace app {

class ExpectedHash {
 public:
  // All must outlive the object.
  ExpectedHash(RowTable& rows, Hashing& hashing, const OpenRequests& open,
               ProgressDisplay& progress, Banners& banners, Clipboard& clipboard, ListView& list,
               ExpectedView& view);

  // Reads the box, queues missing digests, and states the verdict. Call after every change of the
  // rows.
  void Compare();
  // Call after every change of the box.
  void OnEdited();
  // Puts the clipboard's text into the box.
  void Paste();

 private:
  RowTable& rows_;
  Hashing& hashing_;
  const OpenRequests& open_;
  ProgressDisplay& progress_;
  Banners& banners_;
  Clipboard& clipboard_;
  ListView& list_;
  ExpectedView& view_;
};

}  // namespace app
