// How the window is shown when the program starts.
#pragma once

namespace app {

// The values that Windows defines (see ShowWindow).
inline constexpr int ShowNormalCommand = 1;
inline constexpr int ShowMaximizedCommand = 3;
inline constexpr int ShowCommand = 5;
inline constexpr int ShowDefaultCommand = 10;

// The show command for a start with the command `asked`. A window that was maximized when it was
// closed is maximized again, unless the start asks for something else, such as minimized.
constexpr int StartShowCommand(int asked, bool wasMaximized) {
  const bool isOrdinary =
      asked == ShowNormalCommand || asked == ShowCommand || asked == ShowDefaultCommand;
  return wasMaximized && isOrdinary ? ShowMaximizedCommand : asked;
}

}  // namespace app
