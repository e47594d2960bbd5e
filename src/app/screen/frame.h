// The window as a whole.
#pragma once

#include "swr/hash/algorithms.h"

namespace app {

// Implemented by the dialog and by the tests. Called on the window's thread.
class Frame {
 public:
  virtual ~Frame() = default;

  // Show the wait cursor between the two calls, which are not nested.
  virtual void BeginWait() = 0;
  virtual void EndWait() = 0;
  // Opens the Hash Text dialog and returns when it is closed.
  virtual void ShowHashText(swr::AlgoMask mask, bool uppercase) = 0;
  virtual void CloseWindow() = 0;
};

}  // namespace app
