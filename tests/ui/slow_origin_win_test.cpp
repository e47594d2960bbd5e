// Files whose download origin is read slowly, as from a distant share, and are selected in the real
// window.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/replaced_import_win.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/slow_import_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using swr::testing::TempTree;

// Downloaded files in the list of a window, none of which has been selected.
struct DownloadedFiles {
  DownloadedFiles() {
    std::vector<std::u16string> paths;
    // The first file of a list is selected when it is added.
    for (const char16_t* name : {u"first.bin", u"a.bin", u"b.bin", u"c.bin", u"d.bin"}) {
      paths.push_back(tree.AddFile(name, "content"));
      swr::testing::WriteBytes(paths.back() + u":Zone.Identifier",
                               "ZoneId=3\r\nHostUrl=https://" + swr::WideToUtf8(name));
    }
    window.Drop(paths);
    window.WaitUntilIdle();
  }
  bool Shows(const std::u16string& text) const {
    return window.Text(IDC_DETAILS).find(text) != std::u16string::npos;
  }

  TempTree tree;
  RunningWindow window;
};

TEST(SlowOriginTest, AnOriginIsShownWhenItHasBeenRead) {
  const DownloadedFiles files;
  // On a busy machine a single selection can take longer.
  auto shortest = steady_clock::duration::max();
  const SlowImport slow(files.window.Handle(), "CreateFileW", seconds(1));
  const ReplacedImport replaced(files.window.Handle(), "CreateFileW", slow.Replacement());
  for (const int row : {1, 2, 3}) {
    const auto start = steady_clock::now();
    files.window.SelectOnly({row});
    EXPECT_TRUE(files.Shows(u"\r\nSignature:\tChecking..."));
    shortest = std::min(shortest, steady_clock::now() - start);
    EXPECT_FALSE(files.Shows(u"Downloaded from:"));
  }
  EXPECT_LT(shortest, milliseconds(500));
  EXPECT_TRUE(WaitFor([&] { return files.Shows(u"Downloaded from:\thttps://c.bin"); }));
  // The other rows got theirs while they were not selected.
  files.window.SelectOnly({1});
  EXPECT_TRUE(WaitFor([&] { return files.Shows(u"Downloaded from:\thttps://a.bin"); }));
}

TEST(SlowOriginTest, ClosingDoesNotWaitForAnOrigin) {
  DownloadedFiles files;
  const SlowImport slow(files.window.Handle(), "CreateFileW", seconds(30));
  const ReplacedImport replaced(files.window.Handle(), "CreateFileW", slow.Replacement());
  files.window.SelectOnly({4});
  ASSERT_FALSE(files.Shows(u"Downloaded from:"));
  const auto start = steady_clock::now();
  EXPECT_EQ(files.window.Close(), 0);
  EXPECT_LT(steady_clock::now() - start, seconds(5));
}

}  // namespace
}  // namespace app::testing
