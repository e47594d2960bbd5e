// A folder of a hundred thousand files: how long the window does not respond.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

#include "resources/resource_ids.h"
#include "tests/kit/figure_line.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/soak_test/hang_probe_win.h"

namespace app::testing {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using swr::testing::TempTree;

constexpr uint64_t FilesPerFolder = 1000;
// After this time Windows adds "Not responding" to the title.
constexpr milliseconds NotResponding{5000};

std::u16string Ascii(const std::string& text) { return {text.begin(), text.end()}; }

std::string Milliseconds(milliseconds time) { return std::to_string(time.count()) + " ms"; }

milliseconds Since(steady_clock::time_point start) {
  return duration_cast<milliseconds>(steady_clock::now() - start);
}

// The files are created before the test and removed after it, so that neither is part of its time.
class LargeFolderTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    count = swr::testing::NumberFromEnvironment("SUMWRIGHT_KIT_FILES", 2000);
    tree = std::make_unique<TempTree>();
    for (uint64_t first = 0; first < count; first += FilesPerFolder) {
      const std::u16string folder =
          tree->AddFolder(Ascii(std::to_string(first / FilesPerFolder))) + u"\\";
      for (uint64_t i = first; i < std::min(first + FilesPerFolder, count); ++i) {
        swr::testing::WriteBytes(folder + Ascii(std::to_string(i)), std::to_string(i));
      }
    }
  }
  static void TearDownTestSuite() { tree.reset(); }

  static inline uint64_t count = 0;
  static inline std::unique_ptr<TempTree> tree;
};

TEST_F(LargeFolderTest, TheWindowStaysResponsiveWhileItIsAddedAndHashed) {
  const RunningWindow window;
  const std::string what = std::to_string(count) + " files: ";
  HangProbe probe(window.Handle(), [](milliseconds, milliseconds) {});
  const auto start = steady_clock::now();
  window.Drop({tree->Root()});
  ASSERT_TRUE(WaitFor([&] { return static_cast<uint64_t>(window.RowCount()) == count; }));
  kit::PrintFigure(what + "until all rows are in the list", Milliseconds(Since(start)));
  ASSERT_TRUE(WaitFor([&] { return !window.IsShown(IDC_CANCEL); }, std::chrono::minutes(3)));
  kit::PrintFigure(what + "until all are hashed", Milliseconds(Since(start)));
  kit::PrintFigure(what + "longest time without an answer", Milliseconds(probe.LongestAnswer()));
  EXPECT_LT(probe.LongestAnswer(), NotResponding);
  EXPECT_EQ(window.Cell(static_cast<int>(count) - 1, u"Status"), u"Done");
}

}  // namespace
}  // namespace app::testing
