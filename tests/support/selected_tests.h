// The tests that a GoogleTest filter selects.
#pragma once

namespace swr::testing {

// As RUN_ALL_TESTS, but returns 2 without running any test when a pattern of the filter matches no
// test. Otherwise a renamed test would be left out of a selection without notice. Call it once,
// after InitGoogleTest.
int RunSelectedTests();

}  // namespace swr::testing
