// How the window is shown when the program starts.
#pragma once

namespace app {

// The values that Windows defines (see ShowWindow).
inline constexpr int ShowNormalCommand = 1;
inline constexpr int ShowMaximizedCommand = 3;
inline constexpr int ShowCommand = 5;
inline constexpr int ShowDefaultCommand = 10;

// The show command to use when the program was started with the command `requested`. A window that
// was maximized when it was closed is maximized again, unless something else was requested, such as
// minimized.
constexpr int StartShowCommand(int requested, bool wasMaximized) {
  const bool isOrdinary =
      requested == ShowNormalCommand || requested == ShowCommand || requested == ShowDefaultCommand;
  return wasMaximized && isOrdinary ? ShowMaximizedCommand : requested;
}

}  // namespace app
