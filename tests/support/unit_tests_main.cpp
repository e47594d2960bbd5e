// Runs the unit tests of a program.
#include <gtest/gtest.h>

#include "tests/support/selected_tests.h"

int main(int argumentCount, char** arguments) {
  ::testing::InitGoogleTest(&argumentCount, arguments);
  return swr::testing::RunSelectedTests();
}
