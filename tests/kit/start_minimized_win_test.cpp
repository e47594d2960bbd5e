// The program started with the command prompt's "start" command, as in scripts.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/system_command_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;

// The window of a program that another process started.
HWND WindowOf(const std::u16string& title) {
  HWND window = nullptr;
  WaitFor([&] {
    window = FindWindowW(L"#32770", AsWide(title));
    return window != nullptr && IsWindowVisible(window);
  });
  return window;
}

struct StartCase {
  const char* description;
  const wchar_t* option;
  bool isMinimized;
  bool isMaximized;
};

TEST(StartMinimizedTest, TheWindowOpensAsRequested) {
  // The window was closed maximized before, which must not override the requested state.
  {
    RunningWindow window;
    ShowWindowAsync(window.Handle(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(WaitFor([&] { return IsZoomed(window.Handle()) != FALSE; }));
    EXPECT_EQ(window.Close(), 0);
  }
  TempTree tree;
  const std::u16string program = tree.Path(u"Sumwright.exe");
  ASSERT_TRUE(CopyFileW(AsWide(ProgramUnderTest()), AsWide(program), FALSE));
  // Otherwise Windows would ask before it starts a downloaded program.
  DeleteFileW(AsWide(program + u":Zone.Identifier"));
  const StartCase cases[] = {{"without an option", L"", false, true},
                             {"minimized", L"/min", true, false}};
  for (const StartCase& test : cases) {
    SCOPED_TRACE(test.description);
    swr::testing::RunSystemCommand(std::wstring(L"start \"\" ") + test.option + L" \"" +
                                   AsWide(program) + L"\"");
    const HWND window = WindowOf(u"Sumwright");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(WaitFor([&] { return (IsIconic(window) != FALSE) == test.isMinimized; }));
    EXPECT_TRUE(WaitFor([&] { return (IsZoomed(window) != FALSE) == test.isMaximized; }));
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(window); }));
  }
  // The process still has to end before its file can be removed.
  EXPECT_TRUE(WaitFor([&] { return DeleteFileW(AsWide(program)) != FALSE; }));
}

}  // namespace
}  // namespace app::testing
