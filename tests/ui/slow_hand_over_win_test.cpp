// Paths are handed to a window that takes longer to add them than the sender waits.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>

#include "swr/text/decimal_text.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/suspended_thread_win.h"

namespace app::testing {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;
using swr::testing::TempTree;

// So many that adding them is still in progress when the test notices that it has begun.
constexpr int FileCount = 4000;

// A window that receives paths restores itself first.
bool WaitUntilRestored(const RunningWindow& window) {
  const auto end = steady_clock::now() + seconds(30);
  while (window.IsMinimized()) {
    if (steady_clock::now() > end) return false;
  }
  return true;
}

TEST(SlowHandOverTest, AfterTenSecondsTheSenderOpensAWindowAndTheFirstKeepsThePathsToo) {
  TempTree tree;
  const std::u16string folder = tree.AddFolder(u"many");
  for (int i = 0; i < FileCount; ++i) {
    tree.AddFile(u"many/" + swr::DecimalText(static_cast<uint64_t>(i)), "x");
  }
  const RunningWindow slow({.minimized = true});
  const auto start = steady_clock::now();
  ProgramProcess sender({.arguments = {folder}, .keepSettings = true});
  ASSERT_TRUE(WaitUntilRestored(slow));
  {
    const SuspendedThread suspended(slow.Handle());
    const RunningWindow own(std::move(sender));
    EXPECT_GE(steady_clock::now() - start, seconds(10)) << "as long as the sender waits";
    own.WaitUntilIdle();
    EXPECT_EQ(own.RowCount(), FileCount);
  }
  slow.WaitUntilIdle();
  EXPECT_EQ(slow.RowCount(), FileCount);
}

}  // namespace
}  // namespace app::testing
