// A hundred thousand rows: sorting, selecting and removing are fast.
#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using swr::testing::TempTree;

constexpr int RowCount = 100'000;

// Missing files, which need no hashing.
std::string ListOfMissingFiles() {
  std::string text;
  for (int i = 0; i < RowCount; ++i) {
    // Not sorted yet.
    text += std::string(64, '0') + "  folder/" + std::to_string(i * 7919LL % RowCount) + ".jpg\n";
  }
  return text;
}

class LongListTest : public ::testing::Test {
 protected:
  LongListTest() {
    window_.Drop({tree_.AddFile(u"SHA256SUMS", ListOfMissingFiles())});
    window_.FocusOn(IDC_BANNER);
    window_.PressKey(IDC_BANNER, VK_RETURN);
    if (!WaitFor([&] { return window_.RowCount() == RowCount; })) {
      throw std::runtime_error("the list was not loaded");
    }
    window_.Ping();
  }

  // How long an action of the window takes.
  template <typename Action>
  milliseconds TimeOf(const Action& action) {
    const auto start = steady_clock::now();
    action();
    window_.Ping();
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
  }

  TempTree tree_;
  RunningWindow window_;
};

// Far more than the program needs on an idle machine, so that a busy one passes too. A list view
// that repainted each row individually would take a hundred times as long.
constexpr milliseconds TimeLimit(1500);

TEST_F(LongListTest, SortsWithoutDelay) {
  constexpr int name = 0;
  EXPECT_LT(TimeOf([&] { window_.ClickHeading(name); }), TimeLimit);
  EXPECT_EQ(window_.Row(0)[name], u"0.jpg");
  EXPECT_EQ(window_.Row(RowCount - 1)[name], u"99999.jpg");
  EXPECT_LT(TimeOf([&] { window_.ClickHeading(name); }), TimeLimit);
  EXPECT_EQ(window_.Row(0)[name], u"99999.jpg");
}

TEST_F(LongListTest, SelectsAllAndNoneAtOnce) {
  EXPECT_LT(TimeOf([&] { window_.Command(ID_SELECT_ALL); }), TimeLimit);
  EXPECT_EQ(window_.Text(IDC_DETAILS), u"100000 files selected, 0 bytes in total.");
  EXPECT_LT(TimeOf([&] { window_.ClickHeading(0); }), TimeLimit);
  EXPECT_EQ(window_.Text(IDC_DETAILS), u"100000 files. Select one to see its details.");
}

TEST_F(LongListTest, RemovesAllAtOnce) {
  window_.Command(ID_SELECT_ALL);
  EXPECT_LT(TimeOf([&] { window_.Command(ID_REMOVE); }), TimeLimit);
  EXPECT_EQ(window_.RowCount(), 0);
}

}  // namespace
}  // namespace app::testing
