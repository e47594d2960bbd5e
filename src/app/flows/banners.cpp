#include "app/flows/banners.h"

namespace app {

void Banners::Show(BannerKind kind, const std::u16string& markup, const std::u16string& payload) {
  kind_ = kind;
  payload_ = payload;
  view_.ShowBanner(markup);
}

void Banners::Hide() {
  if (kind_ == BannerKind::None) return;
  kind_ = BannerKind::None;
  payload_.clear();
  view_.HideBanner();
}

}  // namespace app
