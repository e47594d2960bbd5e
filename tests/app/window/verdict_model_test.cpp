// Compares the window with a reference model: after any sequence of random events, the Status
// column, the colours, the result line, the details, the banner and the jobs are those of the
// model, and the screen is up to date.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/random_window.h"

namespace app::testing {
namespace {

void ExpectRuns(uint32_t runs, int steps, size_t longestList, bool overlaps = false) {
  RandomFiles files;
  for (uint32_t seed = 1; seed <= runs; ++seed) {
    RandomWindow window(files, seed, longestList, overlaps);
    std::string events;
    for (int step = 0; step < steps; ++step) {
      events += window.Step() + "; ";
      window.Check();
      if (::testing::Test::HasFailure()) FAIL() << "seed " << seed << ": " << events;
    }
  }
}

TEST(VerdictModelTest, VerdictsAreRightAfterRandomEvents) { ExpectRuns(600, 60, 3); }

// The running counters of a long list against a reference model that counts from scratch after each
// event.
TEST(VerdictModelTest, VerdictsAreRightInLongLists) {
  ExpectRuns(40, 60, 60);
  ExpectRuns(3, 60, 2000);
}

// Files are looked up one by one between the other events.
TEST(VerdictModelTest, VerdictsAreRightWhileFilesAreLookedUp) {
  ExpectRuns(600, 80, 5, true);
  ExpectRuns(20, 80, 60, true);
}

}  // namespace
}  // namespace app::testing
