// The keys of the Hash Text dialog, and its move to a screen with a different DPI.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::AskWindow;
using swr::testing::RemoteMemory;

// A window with its Hash Text dialog.
class HashTextTest : public ::testing::Test {
 protected:
  HashTextTest() { Open(); }

  void Open() {
    window_.PostCommand(ID_HASH_TEXT);
    dialog_ = std::make_unique<ProgramDialog>(window_, u"Hash Text");
  }
  HWND Handle() const { return dialog_->Handle(); }
  bool IsOpen() const { return IsWindow(Handle()) != FALSE; }
  bool WaitUntilClosed() const {
    return WaitFor([&] { return !IsOpen() && window_.TakesInput(); });
  }
  void Type(const std::u16string& text) const {
    AskWindow(dialog_->Control(IDC_HT_INPUT), EM_REPLACESEL, TRUE,
              reinterpret_cast<LPARAM>(swr::AsWide(text)));
  }
  // Sends the key as the keyboard does while this control has the focus.
  void Press(int control, int key) const {
    // A box that gets the focus has all its text selected.
    if (window_.FocusedControl() != control) {
      AskWindow(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog_->Control(control)), TRUE);
    }
    PostMessageW(dialog_->Control(control), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    PostMessageW(dialog_->Control(control), WM_KEYUP, static_cast<WPARAM>(key),
                 static_cast<LPARAM>(0xC0000001));
  }
  Size OuterSize() const {
    RECT rect = {};
    GetWindowRect(Handle(), &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
  }
  void Resize(Size outer) const {
    SetWindowPos(Handle(), nullptr, 0, 0, outer.width, outer.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    AskWindow(Handle(), WM_NULL);
  }

  RunningWindow window_;
  std::unique_ptr<ProgramDialog> dialog_;
};

using HashTextKeysTest = HashTextTest;

TEST_F(HashTextKeysTest, ReturnInTheTextAddsALine) {
  Type(u"a");
  Press(IDC_HT_INPUT, VK_RETURN);
  EXPECT_TRUE(WaitFor([&] { return dialog_->Text(IDC_HT_INPUT) == u"a\r\n"; }));
  Type(u"b");
  EXPECT_EQ(dialog_->Text(IDC_HT_INPUT), u"a\r\nb");
  EXPECT_TRUE(dialog_->Text(IDC_HT_RESULT).ends_with(u"\n3 bytes"));
  EXPECT_TRUE(IsOpen());
}

TEST_F(HashTextKeysTest, ReturnElsewhereCloses) {
  for (const int control : {IDC_HT_ENCODING, IDC_HT_LINEBREAKS, IDC_HT_ADD_EOL, IDCANCEL}) {
    SCOPED_TRACE(control);
    if (!IsOpen()) Open();
    Press(control, VK_RETURN);
    EXPECT_TRUE(WaitUntilClosed());
  }
}

TEST_F(HashTextKeysTest, EscapeCloses) {
  for (const int control :
       {IDC_HT_INPUT, IDC_HT_ENCODING, IDC_HT_ADD_EOL, IDC_HT_RESULT, IDC_HT_COPY, IDCANCEL}) {
    SCOPED_TRACE(control);
    if (!IsOpen()) Open();
    Type(u"abc");
    Press(control, VK_ESCAPE);
    EXPECT_TRUE(WaitUntilClosed());
  }
}

// The command that a dialog sends for Return when it has no default button.
TEST_F(HashTextKeysTest, TheOkCommandDoesNotClose) {
  AskWindow(Handle(), WM_COMMAND, IDOK);
  window_.WaitForPostedMessages();
  EXPECT_TRUE(IsOpen());
}

// ---- Another DPI.

class HashTextDpiTest : public HashTextTest {
 protected:
  // Moves the dialog to a screen with this DPI; its size stays the same.
  void ChangeDpi(int dpi) const {
    RECT suggested = {};
    GetWindowRect(Handle(), &suggested);
    const RemoteMemory memory(Handle(), sizeof suggested);
    memory.Write(0, &suggested, sizeof suggested);
    AskWindow(Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
              reinterpret_cast<LPARAM>(memory.At(0)));
    window_.WaitForPostedMessages();  // it posts itself a message to finish the layout
  }
  std::vector<Rect> Places() const {
    std::vector<Rect> places;
    for (const int id :
         {IDC_HT_INPUT, IDC_HT_ENCODING, IDC_HT_ADD_EOL, IDC_HT_RESULT, IDC_HT_COPY, IDCANCEL}) {
      places.push_back(dialog_->Place(id));
    }
    return places;
  }
};

// Half a pixel is rounded up.
int Scaled(int value, int dpi, int oldDpi) { return (value * dpi + oldDpi / 2) / oldDpi; }

TEST_F(HashTextDpiTest, TheSmallestSizeFollows) {
  const int oldDpi = window_.Dpi();
  const int newDpi = oldDpi * 3 / 2;
  const Size designed = OuterSize();
  const Size scaled = {Scaled(designed.width, newDpi, oldDpi),
                       Scaled(designed.height, newDpi, oldDpi)};
  ChangeDpi(newDpi);
  Resize({10, 10});
  EXPECT_EQ(OuterSize(), scaled);
  // And back again.
  ChangeDpi(oldDpi);
  Resize({10, 10});
  EXPECT_NEAR(OuterSize().width, designed.width, 1);
  EXPECT_NEAR(OuterSize().height, designed.height, 1);
}

// Later layouts are computed from the controls' positions after the change, so that half of an odd
// height is rounded again.
TEST_F(HashTextDpiTest, LaterLayoutsStartFromTheNewPositions) {
  const Size designed = OuterSize();
  // Larger than the minimum size at the new DPI, and small enough that the window is not moved.
  const Size base = {designed.width * 8 / 5, designed.height + (designed.height * 3 / 5 | 1)};
  Resize(base);
  ChangeDpi(window_.Dpi() * 3 / 2);
  const std::vector<Rect> before = Places();
  Resize({base.width + 61, base.height + 41});
  const auto moved = [](const Rect& rect, int left, int top, int right, int bottom) {
    return Rect{rect.left + left, rect.top + top, rect.right + right, rect.bottom + bottom};
  };
  EXPECT_EQ(Places(), (std::vector<Rect>{
                          moved(before[0], 0, 0, 61, 20), moved(before[1], 0, 20, 0, 20),
                          moved(before[2], 0, 20, 0, 20), moved(before[3], 0, 20, 61, 41),
                          moved(before[4], 61, 41, 61, 41), moved(before[5], 61, 41, 61, 41)}));
  Resize(base);
  EXPECT_EQ(Places(), before);
}

}  // namespace
}  // namespace app::testing
