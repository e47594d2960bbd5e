// The details pane and the buttons beside it.
#pragma once

#include <string>

namespace app {

// Which buttons are enabled.
struct DetailButtons {
  bool copyHashes = false;
  bool lookUpOnline = false;
  bool openFolder = false;
};

// Implemented by the dialog's controls and by the tests. Called on the window's thread.
class DetailsView {
 public:
  virtual ~DetailsView() = default;

  // Lines end in CR LF; a tab precedes the column of values.
  virtual void SetDetails(const std::u16string& text, const DetailButtons& buttons) = 0;
};

}  // namespace app
