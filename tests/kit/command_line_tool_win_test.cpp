// swrhash in its own console: its output, and the effect of Ctrl+C.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"
#include "tests/support/wine_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_process_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;

// In the folder of Sumwright.exe, built for the same word size as this test. In the build folders
// the name is the same for both sizes; users get two names.
std::wstring Tool() {
  const std::u16string path = ProgramUnderTest();
  const std::u16string folder = path.substr(0, path.rfind(u'\\') + 1);
  const std::wstring native(AsWide(folder + u"swrhash64.exe"));
  const bool hasNative = GetFileAttributesW(native.c_str()) != INVALID_FILE_ATTRIBUTES;
  return sizeof(void*) == 8 && hasNative ? native : std::wstring(AsWide(folder + u"swrhash.exe"));
}

// A program in an invisible console, which this process joins.
class ConsoleProcess {
 public:
  ConsoleProcess(std::wstring commandLine, const std::u16string& folder) {
    STARTUPINFOW startup = {.cb = sizeof startup};
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                        nullptr, AsWide(folder), &startup, &process_)) {
      return;
    }
    FreeConsole();
    isAttached_ = WaitFor([&] { return AttachConsole(process_.dwProcessId) != FALSE; });
    // Ctrl+C goes to every process of a console.
    SetConsoleCtrlHandler(nullptr, TRUE);
  }
  ~ConsoleProcess() {
    TerminateProcess(process_.hProcess, 0);
    WaitForSingleObject(process_.hProcess, 10'000);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
    FreeConsole();
    AttachConsole(ATTACH_PARENT_PROCESS);
    SetConsoleCtrlHandler(nullptr, FALSE);
  }
  ConsoleProcess(const ConsoleProcess&) = delete;
  ConsoleProcess& operator=(const ConsoleProcess&) = delete;

  bool IsAttached() const { return isAttached_; }

  void PressCtrlC() const { GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); }

  // The exit code; STILL_ACTIVE when the program does not end.
  DWORD WaitForEnd() const {
    WaitForSingleObject(process_.hProcess, 10'000);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
  }

  // The text on the console, without line ends.
  std::u16string Screen() const {
    const HANDLE screen =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    GetConsoleScreenBufferInfo(screen, &info);
    std::wstring text(static_cast<size_t>(info.dwSize.X) * static_cast<size_t>(info.dwSize.Y), 0);
    DWORD length = 0;
    ReadConsoleOutputCharacterW(screen, text.data(), static_cast<DWORD>(text.size()), {}, &length);
    CloseHandle(screen);
    text.resize(length);
    return swr::FromWide(text);
  }

 private:
  PROCESS_INFORMATION process_ = {};
  bool isAttached_ = false;
};

std::wstring InPrompt(const std::wstring& arguments) {
  wchar_t folder[MAX_PATH] = {};
  GetSystemDirectoryW(folder, MAX_PATH);
  return std::wstring(L"\"") + folder + L"\\cmd.exe\" /d /s /k \"\"" + Tool() + L"\" " + arguments +
         L"\"";
}

std::vector<std::u16string> FilesIn(const std::u16string& folder) {
  std::vector<std::u16string> names;
  WIN32_FIND_DATAW data = {};
  const HANDLE search = FindFirstFileW(AsWide(folder + u"\\*"), &data);
  for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data)) {
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      names.push_back(swr::FromWide(data.cFileName));
    }
  }
  FindClose(search);
  return names;
}

TEST(CommandLineToolTest, AConsoleShowsNamesInEveryScript) {
  TempTree tree;
  for (const char16_t* name : {u"\u00e9t\u00e9.abc", u"\u0434\u043e\u043c.abc", u"\u03b1.abc"}) {
    tree.AddFile(name, DigestsOfAbc.input);
  }
  const ConsoleProcess console(InPrompt(L"-a md5 *.abc"), tree.Root());
  if (!console.IsAttached()) GTEST_SKIP() << "there is no console here";
  for (const char16_t* name : {u"\u00e9t\u00e9.abc", u"\u0434\u043e\u043c.abc", u"\u03b1.abc"}) {
    const std::u16string line = std::u16string(DigestsOfAbc.md5) + u"  " + name;
    EXPECT_TRUE(WaitFor([&] { return console.Screen().find(line) != std::u16string::npos; }))
        << swr::WideToUtf8(line) << " is not in\n"
        << swr::WideToUtf8(console.Screen());
  }
}

TEST(CommandLineToolTest, CtrlCEndsItAtOnceAndLeavesNoHalfWrittenFile) {
  TempTree tree;
  const std::u16string large = tree.AddFile(u"large", "");
  swr::testing::ResizeFile(large, uint64_t{64} << 30);
  const ConsoleProcess console(L"\"" + Tool() + L"\" -a md2 -o list.txt large", tree.Root());
  if (!console.IsAttached()) GTEST_SKIP() << "there is no console here";
  ASSERT_TRUE(WaitFor([&] { return FilesIn(tree.Root()).size() == 2; }))
      << "the temporary file of the list exists";
  console.PressCtrlC();
  const DWORD code = console.WaitForEnd();
  if (swr::testing::IsWine()) {
    EXPECT_EQ(code, 0u) << "the exit code that Wine's handler uses";
  } else {
    EXPECT_EQ(code, 0xC000013Au) << "STATUS_CONTROL_C_EXIT";
  }
  EXPECT_EQ(FilesIn(tree.Root()), std::vector<std::u16string>{u"large"});
}

}  // namespace
}  // namespace app::testing
