#include "app/window/banner_control_win.h"

#include <utility>

#include "app/window/control_state_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {

void BannerControl::Attach(HWND dialog, std::function<void()> onChange) {
  dialog_ = dialog;
  onChange_ = std::move(onChange);
}

void BannerControl::ShowBanner(const std::u16string& markup) {
  SetDlgItemTextW(dialog_, IDC_BANNER, swr::AsWide(markup));
  shows_ = true;
  ShowControl(dialog_, IDC_BANNER, true);
  onChange_();
}

void BannerControl::HideBanner() {
  shows_ = false;
  ShowControl(dialog_, IDC_BANNER, false);
  SetDlgItemTextW(dialog_, IDC_BANNER, L"");
  onChange_();
}

}  // namespace app
