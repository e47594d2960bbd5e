// The banner: the line above the list that makes an offer without blocking the user. At most one is
// shown at a time; banner_links.h has the effects of its links.
#pragma once

#include <cstdint>
#include <string>

#include "app/screen/banner_view.h"

namespace app {

enum class BannerKind : uint8_t {
  None = 0,
  Clipboard = 1,
  ChecksumFileOffer = 2,
  StaleExplorer = 3,
  SkippedLines = 4,
};

class Banners {
 public:
  // The view must outlive the object.
  explicit Banners(BannerView& view) : view_(view) {}

  // Replaces the current banner, if any. The payload is the subject of the offer, such as a path.
  void Show(BannerKind kind, const std::u16string& markup, const std::u16string& payload);
  void Hide();

  BannerKind Kind() const { return kind_; }
  const std::u16string& Payload() const { return payload_; }

 private:
  BannerView& view_;
  BannerKind kind_ = BannerKind::None;
  std::u16string payload_;
};

}  // namespace app
