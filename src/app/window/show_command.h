// How the window shows at its start.
#pragma once

namespace app {

// The values that Windows gives them (see ShowWindow).
inline constexpr int ShowNormalCommand = 1;
inline constexpr int ShowMaximizedCommand = 3;
inline constexpr int ShowCommand = 5;
inline constexpr int ShowDefaultCommand = 10;

// The show command for a start that was asked for with `asked`. A window that was closed maximized
// comes back so, unless the start asks for something special, such as minimized.
constexpr int StartShowCommand(int asked, bool wasMaximized) {
  const bool isOrdinary =
      asked == ShowNormalCommand || asked == ShowCommand || asked == ShowDefaultCommand;
  return wasMaximized && isOrdinary ? ShowMaximizedCommand : asked;
}

}  // namespace app
