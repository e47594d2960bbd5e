// The tooltips of the toolbar, and the cue text of the empty Expected hash box.
#include "swr/system/windows_api_win.h"

// After the system header, which it needs.
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::AskWindow;
using swr::testing::RemoteMemory;

constexpr int MaxText = 512;

// Memory in the program's process for a request and the text of its answer.
template <typename Request>
struct RequestBlock {
  Request request = {};
  wchar_t text[MaxText] = {};
};

std::u16string TipOf(const RunningWindow& window, int command) {
  const HWND toolbar = window.Control(IDC_TOOLBAR);
  const auto tips = reinterpret_cast<HWND>(AskWindow(toolbar, TB_GETTOOLTIPS));
  const RemoteMemory memory(toolbar, sizeof(RequestBlock<TTTOOLINFOW>));
  RequestBlock<TTTOOLINFOW> block;
  block.request.cbSize = sizeof block.request;
  block.request.hwnd = toolbar;
  block.request.uId = static_cast<UINT_PTR>(command);
  block.request.lpszText =
      static_cast<wchar_t*>(memory.At(offsetof(RequestBlock<TTTOOLINFOW>, text)));
  memory.Write(0, &block, sizeof block);
  AskWindow(tips, TTM_GETTEXTW, MaxText, reinterpret_cast<LPARAM>(memory.At(0)));
  memory.Read(0, &block, sizeof block);
  return swr::FromWide(block.text);
}

TEST(HintsTest, EachToolbarButtonHasATooltip) {
  struct Tip {
    int command;
    const char16_t* text;
  };
  const Tip tips[] = {
      {ID_ADD_FILES,
       u"Add files to the list (Ctrl+O). You can also drop files and folders on the window."},
      {ID_ADD_FOLDER, u"Add every file in a folder and its subfolders"},
      {ID_VERIFY_FILE,
       u"Check the files listed in a SHA256SUMS, .sha256, .md5, .sfv or similar file"},
      {ID_HASH_TEXT, u"Calculate the checksums of typed or pasted text"},
      {ID_SAVE_CHECKSUMS, u"Save the checksums to a file (Ctrl+S)"},
      {ID_CLEAR_LIST, u"Remove all files from the list"},
  };
  const RunningWindow window;
  for (const Tip& tip : tips) EXPECT_EQ(TipOf(window, tip.command), tip.text) << tip.command;
}

// How many pixels in the middle of the box differ from its background.
int InkIn(const RunningWindow& window, int control) {
  RECT rect = {};
  GetWindowRect(window.Control(control), &rect);
  const HDC screen = GetDC(nullptr);
  // Away from the caret, which blinks.
  const int left = rect.left + 12;
  const int middle = (rect.top + rect.bottom) / 2;
  const COLORREF background = GetPixel(screen, rect.right - 8, middle);
  int ink = 0;
  for (int x = left; x < left + 200; ++x) {
    for (int y = middle - 4; y < middle + 4; ++y) {
      if (GetPixel(screen, x, y) != background) ++ink;
    }
  }
  ReleaseDC(nullptr, screen);
  return ink;
}

TEST(HintsTest, TheEmptyBoxShowsItsCueEvenWithTheFocus) {
  const RunningWindow window;
  const HWND box = window.Control(IDC_EXPECTED);
  const RemoteMemory memory(box, MaxText * sizeof(wchar_t));
  AskWindow(box, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(memory.At(0)), MaxText);
  wchar_t text[MaxText] = {};
  memory.Read(0, text, sizeof text);
  EXPECT_EQ(swr::FromWide(text), u"Paste the hash from the download page to compare");

  window.FocusOn(IDC_LIST);
  EXPECT_TRUE(WaitFor([&] { return InkIn(window, IDC_EXPECTED) > 0; }));
  window.FocusOn(IDC_EXPECTED);
  ASSERT_EQ(window.FocusedControl(), IDC_EXPECTED);
  window.WaitForPostedMessages();
  EXPECT_TRUE(WaitFor([&] { return InkIn(window, IDC_EXPECTED) > 0; }));
  window.SetExpected(u" ");
  EXPECT_TRUE(WaitFor([&] { return InkIn(window, IDC_EXPECTED) == 0; })) << "any text replaces it";
  EXPECT_EQ(window.Text(IDC_EXPECTED), u" ");
}

}  // namespace
}  // namespace app::testing
