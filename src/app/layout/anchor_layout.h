// How the controls of a dialog move when it is resized: pure arithmetic on rectangles, in pixels of
// the client area.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace app {

struct LayoutRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  bool operator==(const LayoutRect&) const = default;
};

// How much of the added width or height an edge moves by.
enum class Follow : uint8_t { Nothing, Half, All };

struct AnchoredControl {
  uint32_t id;
  Follow left;
  Follow top;
  Follow right;
  Follow bottom;
};

// The rectangles of the controls when the client area is larger by `widthChange` and `heightChange`
// than it was with the rectangles `base`. `base` has one rectangle per control, in the same order.
std::vector<LayoutRect> AnchorLayout(std::span<const AnchoredControl> controls,
                                     std::span<const LayoutRect> base, int32_t widthChange,
                                     int32_t heightChange);

}  // namespace app
