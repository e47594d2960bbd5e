// One window per user: the hand-over between real processes, and messages from foreign processes.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "app/instance/hand_over.h"
#include "resources/resource_ids.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/suspended_thread_win.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using Names = std::vector<std::u16string>;
using namespace std::string_literals;

constexpr wchar_t InstanceName[] = L"Local\\Zendrik.Sumwright.Instance";
constexpr wchar_t WindowName[] = L"Local\\Zendrik.Sumwright.Window";

// The window's answer to the message.
struct Answer {
  LRESULT result = 0;
  bool arrived = false;
};

Answer Send(const RunningWindow& window, ULONG_PTR mark, const void* data, size_t size) {
  COPYDATASTRUCT message = {};
  message.dwData = mark;
  message.cbData = static_cast<DWORD>(size);
  message.lpData = const_cast<void*>(data);
  DWORD_PTR result = 0;
  const bool arrived =
      SendMessageTimeoutW(window.Handle(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&message),
                          SMTO_ABORTIFHUNG, 10'000, &result) != 0;
  return {static_cast<LRESULT>(result), arrived};
}

Answer SendText(const RunningWindow& window, const std::u16string& text) {
  return Send(window, HandOverMark, text.data(), text.size() * sizeof(char16_t));
}

TEST(SingleInstanceTest, TwentyStartsAtOnceGiveOneWindowWithTwentyRows) {
  constexpr size_t count = 20;
  TempTree tree;
  Names names;
  std::vector<ProgramProcess> processes;
  for (size_t i = 0; i < count; ++i) {
    names.push_back(u"file " + std::u16string(1, static_cast<char16_t>(u'a' + i)));
    processes.emplace_back(
        StartOptions{.arguments = {tree.AddFile(names.back(), "content")}, .keepSettings = i > 0});
  }
  const auto ended = [&] {
    return static_cast<size_t>(std::ranges::count_if(processes, &ProgramProcess::HasEnded));
  };
  ASSERT_TRUE(WaitFor([&] { return ended() == count - 1; }));
  const auto first = std::ranges::find_if_not(processes, &ProgramProcess::HasEnded);
  ASSERT_NE(first, processes.end());
  for (const ProgramProcess& process : processes) {
    if (&process == &*first) continue;
    EXPECT_EQ(process.WaitForEnd(), 0);
  }
  RunningWindow window(std::move(*first));
  window.WaitUntilIdle();
  Names rows = window.Column(u"Name");
  std::ranges::sort(rows);
  EXPECT_EQ(rows, names);
  EXPECT_EQ(window.Close(), 0);
}

TEST(SingleInstanceTest, RelativePathsReferToTheSendersFolder) {
  TempTree tree;
  tree.AddFile(u"here/a.txt", "a");
  tree.AddFile(u"here/b.txt", "b");
  const RunningWindow window;
  const ProgramProcess sender({.arguments = {u"a.txt", u".\\b.txt", u"nowhere.txt", u"", u"a.txt"},
                               .folder = tree.Path(u"here"),
                               .keepSettings = true});
  EXPECT_EQ(sender.WaitForEnd(), 0);
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Name"), (Names{u"a.txt", u"b.txt", u"nowhere.txt"}));
  EXPECT_EQ(window.Column(u"Folder"), Names(3, tree.Path(u"here")));
  EXPECT_EQ(window.Column(u"Status"), (Names{u"Done", u"Done", u"Missing"}));
}

TEST(SingleInstanceTest, AStartWithoutPathsOpensAnotherWindowThatReceivesLaterPaths) {
  TempTree tree;
  const std::u16string one = tree.AddFile(u"one", "1");
  const std::u16string two = tree.AddFile(u"two", "2");
  const RunningWindow first;
  {
    RunningWindow second({.keepSettings = true});
    const ProgramProcess sender({.arguments = {one}, .keepSettings = true});
    EXPECT_EQ(sender.WaitForEnd(), 0);
    EXPECT_EQ(second.Column(u"Name"), Names{u"one"});
    EXPECT_EQ(first.RowCount(), 0);
    EXPECT_EQ(second.Close(), 0);
  }
  // The published window is the closed one, until a third window opens for the paths.
  const RunningWindow third({.arguments = {two}, .keepSettings = true});
  third.WaitUntilIdle();
  EXPECT_EQ(third.Column(u"Name"), Names{u"two"});
  EXPECT_EQ(first.RowCount(), 0);
  const ProgramProcess sender({.arguments = {one}, .keepSettings = true});
  EXPECT_EQ(sender.WaitForEnd(), 0);
  EXPECT_EQ(third.Column(u"Name"), (Names{u"two", u"one"}));
}

TEST(SingleInstanceTest, AWindowThatHangsLosesNothing) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"one", "1");
  const RunningWindow hanging;
  {
    const SuspendedThread suspended(hanging.Handle());
    const RunningWindow own({.arguments = {file}, .keepSettings = true});
    own.WaitUntilIdle();
    EXPECT_EQ(own.Column(u"Name"), Names{u"one"});
  }
  hanging.Ping();
}

// The published value is not a window: it is missing, a closed window, or shorter than eight bytes.
TEST(SingleInstanceTest, WithoutAPublishedWindowThePathsGetANewOne) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"one", "1");
  const HANDLE instance = CreateMutexW(nullptr, FALSE, InstanceName);
  ASSERT_NE(instance, nullptr);
  for (const uint64_t published : {uint64_t{0}, uint64_t{0x0BAD'0BAD}, ~uint64_t{0}}) {
    const HANDLE mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                              sizeof published, WindowName);
    ASSERT_NE(mapping, nullptr);
    void* const view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof published);
    std::memcpy(view, &published, sizeof published);
    UnmapViewOfFile(view);
    {
      const RunningWindow window({.arguments = {file}});
      window.WaitUntilIdle();
      EXPECT_EQ(window.Column(u"Name"), Names{u"one"});
      const ProgramProcess sender({.arguments = {tree.Root()}, .keepSettings = true});
      EXPECT_EQ(sender.WaitForEnd(), 0) << "the new window is the published one";
    }
    CloseHandle(mapping);
  }
  CloseHandle(instance);
}

TEST(SingleInstanceTest, AnyMessageIsParsed) {
  TempTree tree;
  const std::u16string a = tree.AddFile(u"a", "1");
  const std::u16string b = tree.AddFile(u"b", "2");
  const RunningWindow window;
  struct Row {
    std::u16string payload;
    Names names;
  };
  const std::vector<Row> rows = {
      {u"", {}},
      {u"\0\0\0"s, {}},
      {a + u"\0\0"s + b, {u"a", u"b"}},
      {a + u"\0"s + b + u"\0"s, {u"a", u"b"}},
      {u"\0"s + b, {u"b"}},
      {std::u16string(100'000, u'\0') + a, {u"a"}},
  };
  for (const Row& row : rows) {
    const Answer answer = SendText(window, row.payload);
    EXPECT_TRUE(answer.arrived);
    EXPECT_EQ(answer.result, 1);
    window.WaitUntilIdle();
    EXPECT_EQ(window.Column(u"Name"), row.names);
    window.Command(ID_CLEAR_LIST);
  }
}

TEST(SingleInstanceTest, AForeignMessageIsIgnored) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"a", "1") + u"\0"s;
  const size_t size = file.size() * sizeof(char16_t);
  const RunningWindow window({.minimized = true});
  const ULONG_PTR marks[] = {0, 0x52575253, HandOverMark + 1, HandOverMark | ULONG_PTR{1} << 63};
  for (const ULONG_PTR mark : marks) {
    const Answer answer = Send(window, mark, file.data(), size);
    EXPECT_TRUE(answer.arrived);
    EXPECT_EQ(answer.result, 0);
  }
  for (const size_t odd : {size_t{1}, size - 1}) {
    const Answer answer = Send(window, HandOverMark, file.data(), odd);
    EXPECT_TRUE(answer.arrived);
    EXPECT_EQ(answer.result, 0);
  }
  EXPECT_EQ(window.RowCount(), 0);
  EXPECT_TRUE(window.IsMinimized());
}

TEST(SingleInstanceTest, AnEmptyMessageRaisesTheWindow) {
  const RunningWindow window({.minimized = true});
  EXPECT_EQ(Send(window, HandOverMark, nullptr, 0).result, 1);
  EXPECT_FALSE(window.IsMinimized());
  EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window.Handle(); }));
  EXPECT_EQ(window.RowCount(), 0);
}

TEST(SingleInstanceTest, PathsArriveWhileADialogIsOpen) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"a", "1");
  const RunningWindow window;
  window.PostCommand(ID_SAVE_CHECKSUMS);
  const ProgramDialog message(window, u"Sumwright");
  const ProgramProcess sender({.arguments = {file}, .keepSettings = true});
  EXPECT_EQ(sender.WaitForEnd(), 0);
  EXPECT_EQ(window.Column(u"Name"), Names{u"a"});
  message.Press(IDOK);
  window.WaitUntilIdle();
  EXPECT_EQ(window.Column(u"Status"), Names{u"Done"});
}

}  // namespace
}  // namespace app::testing
