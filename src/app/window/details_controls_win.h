// The controls of the details pane: the box and the buttons beside it.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/screen/details_view.h"

namespace app {

class DetailsControls final : public DetailsView {
 public:
  void Attach(HWND dialog);

  void SetDetails(const std::u16string& text, const DetailButtons& buttons) override;

 private:
  HWND dialog_ = nullptr;
  std::u16string text_;
};

}  // namespace app
