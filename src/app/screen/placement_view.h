// The window's position on the screen.
#pragma once

#include <cstdint>
#include <optional>

namespace app {

// The window's rectangle while it is not maximized, in workspace coordinates.
struct WindowPlacement {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  bool maximized = false;

  bool operator==(const WindowPlacement&) const = default;
};

// Implemented by the dialog and by the tests. Called on the window's thread.
class PlacementView {
 public:
  virtual ~PlacementView() = default;

  // Nothing when the system does not report it.
  virtual std::optional<WindowPlacement> Placement() const = 0;
  // Moves the window without showing it. Returns false and does not move it when the rectangle is
  // on no screen or smaller than the window's minimum size.
  virtual bool MoveTo(const WindowPlacement& placement) = 0;
};

}  // namespace app
