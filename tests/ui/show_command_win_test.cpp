// How the window is shown when it is started hidden, minimized, maximized and so on, as by a
// shortcut or another program.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;

enum class Shown { Not, Minimized, Normal, Maximized };

Shown StateOf(HWND window) {
  if (!IsWindowVisible(window)) return Shown::Not;
  if (IsIconic(window)) return Shown::Minimized;
  return IsZoomed(window) ? Shown::Maximized : Shown::Normal;
}

// The setting that the program writes when it closes: the position, and whether the window was
// maximized.
void WritePlacement(bool maximized) {
  DeleteSettings();
  constexpr uint32_t place[] = {100, 100, 1700, 1500};
  std::vector<uint8_t> bytes;
  for (const uint32_t number : {place[0], place[1], place[2], place[3], maximized ? 1U : 0U}) {
    for (int shift = 0; shift < 32; shift += 8) {
      bytes.push_back(static_cast<uint8_t>(number >> shift));
    }
  }
  WriteSetting(u"Window", bytes);
}

struct ShowCase {
  const char* name;
  int command;
  Shown expected;
};

class ShowCommandTest : public ::testing::Test {
 protected:
  // The state of the window once its paths are added and hashed.
  static void ExpectState(const ShowCase& test, bool closedMaximized) {
    SCOPED_TRACE(test.name);
    TempTree tree;
    WritePlacement(closedMaximized);
    RunningWindow window({.arguments = {tree.AddFile(u"abc", DigestsOfAbc.input)},
                          .showCommand = test.command,
                          .keepSettings = true});
    window.WaitUntilIdle();
    EXPECT_TRUE(
        WaitFor([&] { return StateOf(window.Handle()) == test.expected; }, std::chrono::seconds(5)))
        << static_cast<int>(StateOf(window.Handle()));
    EXPECT_EQ(window.Cell(0, u"SHA-256"), DigestsOfAbc.sha256);
    EXPECT_EQ(window.Close(), 0);
  }
};

TEST_F(ShowCommandTest, TheWindowOpensAsRequested) {
  constexpr ShowCase cases[] = {
      {"hidden", SW_HIDE, Shown::Not},
      {"normal", SW_SHOWNORMAL, Shown::Normal},
      {"minimized", SW_SHOWMINIMIZED, Shown::Minimized},
      {"maximized", SW_SHOWMAXIMIZED, Shown::Maximized},
      {"without being activated", SW_SHOWNOACTIVATE, Shown::Normal},
      {"shown", SW_SHOW, Shown::Normal},
      {"minimized, with the next window in front", SW_MINIMIZE, Shown::Minimized},
      {"minimized, without being activated", SW_SHOWMINNOACTIVE, Shown::Minimized},
      {"shown, without being activated", SW_SHOWNA, Shown::Normal},
      {"restored", SW_RESTORE, Shown::Normal},
      {"by default", SW_SHOWDEFAULT, Shown::Normal},
  };
  for (const ShowCase& test : cases) ExpectState(test, false);
}

TEST_F(ShowCommandTest, AWindowClosedMaximizedReopensMaximized) {
  constexpr ShowCase cases[] = {
      {"normal", SW_SHOWNORMAL, Shown::Maximized},
      {"maximized", SW_SHOWMAXIMIZED, Shown::Maximized},
      {"shown", SW_SHOW, Shown::Maximized},
      {"by default", SW_SHOWDEFAULT, Shown::Maximized},
  };
  for (const ShowCase& test : cases) ExpectState(test, true);
}

TEST_F(ShowCommandTest, AnyOtherShowCommandOverridesMaximized) {
  constexpr ShowCase cases[] = {
      {"hidden", SW_HIDE, Shown::Not},
      {"minimized", SW_SHOWMINIMIZED, Shown::Minimized},
      {"without being activated", SW_SHOWNOACTIVATE, Shown::Normal},
      {"minimized, with the next window in front", SW_MINIMIZE, Shown::Minimized},
      {"minimized, without being activated", SW_SHOWMINNOACTIVE, Shown::Minimized},
      {"shown, without being activated", SW_SHOWNA, Shown::Normal},
      {"restored", SW_RESTORE, Shown::Normal},
  };
  for (const ShowCase& test : cases) ExpectState(test, true);
}

}  // namespace
}  // namespace app::testing
