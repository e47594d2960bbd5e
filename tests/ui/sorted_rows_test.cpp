// Sorting on the screen: the rows are repainted in their new positions.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr uint32_t Green = 0xDEF4DE;
constexpr uint32_t Red = 0xFADEDE;

bool WaitForColours(const RunningWindow& window, const std::vector<uint32_t>& colours) {
  return WaitFor([&] {
    for (size_t i = 0; i < colours.size(); ++i) {
      if (window.RowBackground(static_cast<int>(i)) != colours[i]) return false;
    }
    return true;
  });
}

TEST(SortedRowsTest, ColoursMoveWithTheirRows) {
  TempTree tree;
  tree.AddFile(u"a.bin", DigestsOfAbc.input);
  tree.AddFile(u"b.bin", DigestsOfAbc.input);
  const std::u16string list =
      tree.AddFile(u"SHA256SUMS", swr::WideToUtf8(DigestsOfAbc.sha256) + "  a.bin\n" +
                                      swr::WideToUtf8(DigestsOfDigits.sha256) + "  b.bin\n");
  const RunningWindow window;
  window.Drop({list});
  window.FollowBannerLink(AcceptLink);
  ASSERT_TRUE(WaitFor([&] { return window.RowCount() == 2; }));
  window.WaitUntilIdle();
  ASSERT_EQ(window.Column(u"Status"), (Texts{u"OK (SHA-256)", u"FAILED"}));
  ASSERT_TRUE(WaitForColours(window, {Green, Red}));
  constexpr int name = 0;
  window.ClickHeading(name);
  window.ClickHeading(name);
  ASSERT_EQ(window.Column(u"Name"), (Texts{u"b.bin", u"a.bin"}));
  EXPECT_TRUE(WaitForColours(window, {Red, Green}));
}

}  // namespace
}  // namespace app::testing
