#include "app/window/show_command.h"

#include <gtest/gtest.h>

namespace app {
namespace {

TEST(StartShowCommandTest, OnlyAnOrdinaryStartRestoresAMaximizedWindow) {
  // Windows defines 0 to 11; other values are passed through.
  for (int requested = -1; requested <= 12; ++requested) {
    SCOPED_TRACE(requested);
    EXPECT_EQ(StartShowCommand(requested, false), requested);
    const bool isOrdinary = requested == 1 || requested == 5 || requested == 10;
    EXPECT_EQ(StartShowCommand(requested, true), isOrdinary ? 3 : requested);
  }
}

}  // namespace
}  // namespace app
