// When the window becomes active, offers to compare a hash that the user copied elsewhere, once for
// each content of the clipboard. The Expected hash box never changes by itself.
#pragma once

#include <cstdint>
#include <string>

#include "app/desktop/clipboard.h"
#include "app/flows/banners.h"
#include "app/screen/expected_view.h"

namespace app {

class ClipboardWatch {
 public:
  // All must outlive the object.
  ClipboardWatch(Clipboard& clipboard, Banners& banners, const ExpectedView& expected)
      : clipboard_(clipboard), banners_(banners), expected_(expected) {}

  // To be called when the window becomes active.
  void Check();
  // The user has dismissed this text; it is not offered again.
  void Dismiss(const std::u16string& text) { dismissed_ = text; }

 private:
  Clipboard& clipboard_;
  Banners& banners_;
  const ExpectedView& expected_;
  uint32_t sequence_ = 0;  // of the content checked last
  std::u16string dismissed_;
};

}  // namespace app
