// The banner's control.
#pragma once

#include "swr/system/windows_api_win.h"

#include <functional>

#include "app/screen/banner_view.h"

namespace app {

class BannerControl final : public BannerView {
 public:
  // `onChange` is called after the banner is shown or hidden.
  void Attach(HWND dialog, std::function<void()> onChange);
  bool Shows() const { return shows_; }

  void ShowBanner(const std::u16string& markup) override;
  void HideBanner() override;

 private:
  HWND dialog_ = nullptr;
  std::function<void()> onChange_;
  bool shows_ = false;
};

}  // namespace app
