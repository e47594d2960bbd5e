// The line above the list that makes an offer to the user.
#pragma once

#include <string>

namespace app {

// Implemented by the dialog's control and by the tests. Called on the window's thread.
class BannerView {
 public:
  virtual ~BannerView() = default;

  // Links in the text are written <a id="...">words</a>; a click leads to BannerLinks::Follow.
  virtual void ShowBanner(const std::u16string& markup) = 0;
  virtual void HideBanner() = 0;
};

}  // namespace app
