#include "app/window/show_command.h"

#include <gtest/gtest.h>

namespace app {
namespace {

TEST(StartShowCommandTest, OnlyAnOrdinaryStartRestoresAMaximizedWindow) {
  // Windows defines 0 to 11; other values are passed through.
  for (int asked = -1; asked <= 12; ++asked) {
    SCOPED_TRACE(asked);
    EXPECT_EQ(StartShowCommand(asked, false), asked);
    const bool isOrdinary = asked == 1 || asked == 5 || asked == 10;
    EXPECT_EQ(StartShowCommand(asked, true), isOrdinary ? 3 : asked);
  }
}

}  // namespace
}  // namespace app
