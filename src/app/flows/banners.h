// The banner: the line above the list that offers something and never blocks. There is one at a
// time; what its links do is decided in banner_links.h.
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

  // Replaces the banner that shows, if any. The payload is what the banner's offer is about.
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
