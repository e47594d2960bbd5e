// Sessions that use every function of the window, repeated: nothing may leak.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

class PowerUserTest : public ::testing::Test {
 protected:
  PowerUserTest() {
    for (int i = 0; i < 20; ++i) {
      const std::u16string number(1, static_cast<char16_t>(u'a' + i));
      tree_.AddFile(u"folder/" + number + u".bin", std::string(static_cast<size_t>(i % 7), 'x'));
    }
    list_ = tree_.AddFile(u"SHA256SUMS", std::string(64, '0') + "  folder/a.bin\nrubbish\n");
  }

  void Choose(const std::vector<int>& rows, uint32_t entry) const {
    window_.SelectOnly(rows);
    window_.OpenListMenu();
    window_.ChooseFromMenu(entry);
    ASSERT_TRUE(WaitFor([&] { return window_.OpenMenu().empty(); }));
  }
  void SaveTo(const std::u16string& name) const {
    window_.PostCommand(ID_SAVE_CHECKSUMS);
    const ProgramDialog dialog(window_, u"Save Checksums");
    dialog.SetFileName(tree_.Path(name));
    dialog.Press(IDOK);
  }

  // Uses every function once.
  void Session(const std::u16string& savedName) const {
    window_.Drop({tree_.Path(u"folder")});
    window_.WaitUntilIdle();
    for (int column = 0; column < 6; ++column) window_.ClickHeading(column);
    window_.Command(ID_SELECT_ALL);
    window_.Click(IDC_COPY);
    for (const uint32_t entry : {ID_CTX_COPY_LINE, ID_CTX_COPY_ALL, ID_CTX_COPY_PATH}) {
      Choose({0, 1, 2}, static_cast<uint32_t>(entry));
    }
    Choose({0, 1}, ID_CTX_COMPARE);
    ProgramDialog(window_, u"Sumwright").Press(IDOK);
    for (int row = 0; row < 5; ++row) {
      window_.SelectOnly({row});
      ASSERT_TRUE(WaitFor(
          [&] { return window_.Text(IDC_DETAILS).find(u"Checking...") == std::u16string::npos; }));
    }
    for (const int algo : {IDC_ALGO_SHA512, IDC_ALGO_BLAKE3, IDC_ALGO_SHA512, IDC_ALGO_BLAKE3}) {
      window_.Click(algo);
      window_.WaitUntilIdle();
    }
    window_.SetExpected(std::u16string(DigestsOfAbc.sha512));
    window_.WaitUntilIdle();
    window_.SetExpected(u"");
    SaveTo(savedName);
    window_.PostCommand(ID_HASH_TEXT);
    ProgramDialog(window_, u"Hash Text").Press(IDCANCEL);
    window_.Command(ID_CLEAR_LIST);
    window_.Drop({list_});
    window_.FollowBannerLink(AcceptLink);
    ASSERT_TRUE(WaitFor([&] { return window_.Text(IDC_BANNER).starts_with(u"1 line"); }));
    window_.WaitUntilIdle();
    window_.FollowBannerLink(DismissLink);
    ASSERT_TRUE(WaitFor([&] { return !window_.IsShown(IDC_BANNER); }));
    window_.SelectOnly({0});
    window_.Command(ID_REMOVE);
    window_.Command(ID_CLEAR_LIST);
    window_.WaitUntilIdle();
  }

  TempTree tree_;
  std::u16string list_;
  RunningWindow window_;
};

// The minimum of each resource over some sessions, which excludes temporary ones such as a tooltip
// or a caret.
ProcessResources Least(const ProcessResources& a, const ProcessResources& b) {
  return {.handles = std::min(a.handles, b.handles),
          .gdiObjects = std::min(a.gdiObjects, b.gdiObjects),
          .userObjects = std::min(a.userObjects, b.userObjects)};
}

TEST_F(PowerUserTest, RepeatedSessionsLeakNothing) {
  // In the first session the system's own libraries fill their caches.
  Session(u"first.sha256");
  Session(u"second.sha256");
  // Enough for a leak in each session to exceed what is created once and kept, which was a few GDI
  // objects.
  constexpr int sessions = 8;
  char16_t name = u'a';
  const auto leastOfSessions = [&] {
    ProcessResources least = window_.Resources();
    for (int i = 0; i < sessions; ++i) {
      Session(std::u16string(1, name++) + u".sha256");
      least = Least(least, window_.Resources());
    }
    return least;
  };
  const ProcessResources before = leastOfSessions();
  const ProcessResources after = leastOfSessions();
  EXPECT_GT(before.handles, 0u);
  EXPECT_GT(before.gdiObjects, 0u);
  // Fewer than one more for each session.
  EXPECT_LT(after.handles, before.handles + sessions);
  EXPECT_LT(after.gdiObjects, before.gdiObjects + sessions);
  EXPECT_LT(after.userObjects, before.userObjects + sessions);
  RecordProperty("handles", static_cast<int>(after.handles));
}

}  // namespace
}  // namespace app::testing
