// The Hash Text dialog: typing, choices, layout and resizing.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/decimal_text.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/known_digests.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::AskWindow;

class HashTextDialogTest : public ::testing::Test {
 protected:
  HashTextDialogTest() { window_.PostCommand(ID_HASH_TEXT); }

  // Replaces the current text.
  void Type(const std::u16string& text) const {
    AskWindow(dialog().Control(IDC_HT_INPUT), EM_SETSEL, 0, -1);
    AskWindow(dialog().Control(IDC_HT_INPUT), EM_REPLACESEL, TRUE,
              reinterpret_cast<LPARAM>(swr::AsWide(text)));
  }
  void Choose(int list, int entry) const {
    AskWindow(dialog().Control(list), CB_SETCURSEL, static_cast<WPARAM>(entry));
    AskWindow(dialog().Handle(), WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
              reinterpret_cast<LPARAM>(dialog().Control(list)));
  }
  std::u16string Result() const { return dialog().Text(IDC_HT_RESULT); }
  std::u16string Count() const {
    const std::u16string result = Result();
    return result.substr(result.rfind(u'\n') + 1);
  }
  const ProgramDialog& dialog() const {
    if (!dialog_) dialog_ = std::make_unique<ProgramDialog>(window_, u"Hash Text");
    return *dialog_;
  }

  RunningWindow window_;
  mutable std::unique_ptr<ProgramDialog> dialog_;
};

std::u16string LinesOf(const KnownDigests& digests) {
  return u"MD5:\t" + std::u16string(digests.md5) + u"\r\nSHA-1:\t" + std::u16string(digests.sha1) +
         u"\r\nSHA-256:\t" + std::u16string(digests.sha256);
}

TEST_F(HashTextDialogTest, ShowsTheDigestsOfWhatIsTyped) {
  EXPECT_EQ(Result(), LinesOf(DigestsOfNothing) + u"\r\n\r\n0 bytes");
  EXPECT_FALSE(window_.TakesInput());
  Type(u"abc");
  EXPECT_EQ(Result(), LinesOf(DigestsOfAbc) + u"\r\n\r\n3 bytes");
  Type(u"1");
  EXPECT_EQ(Count(), u"1 byte");
  dialog().Press(IDCANCEL);
}

TEST_F(HashTextDialogTest, ItsChoicesDecideWhatIsHashed) {
  Type(u"a\r\nb");
  EXPECT_EQ(Count(), u"3 bytes");
  Choose(IDC_HT_LINEBREAKS, 0);
  EXPECT_EQ(Count(), u"4 bytes");
  AskWindow(dialog().Control(IDC_HT_ADD_EOL), BM_CLICK);
  EXPECT_EQ(Count(), u"6 bytes");
  Choose(IDC_HT_ENCODING, 1);
  EXPECT_EQ(Count(), u"12 bytes");
  Choose(IDC_HT_LINEBREAKS, 1);
  EXPECT_EQ(Count(), u"8 bytes");
}

TEST_F(HashTextDialogTest, CopyCopiesOnlyTheDigests) {
  Type(u"abc");
  CopyText(u"something else");
  AskWindow(dialog().Control(IDC_HT_COPY), BM_CLICK);
  EXPECT_EQ(CopiedText(), LinesOf(DigestsOfAbc));
}

TEST_F(HashTextDialogTest, EachControlIsWhereItWasDesigned) {
  struct Designed {
    int id;
    const char16_t* text;
    int x, y, width, height;  // in dialog units
  };
  const Designed controls[] = {
      {IDC_HT_INPUT_LABEL, u"&Text to hash:", 7, 7, 200, 9},
      {IDC_HT_INPUT, u"", 7, 18, 326, 80},
      {IDC_HT_ENCODING_LABEL, u"E&ncoding:", 7, 106, 36, 9},
      {IDC_HT_LINEBREAKS_LABEL, u"&Line breaks:", 136, 106, 44, 9},
      {IDC_HT_ADD_EOL, u"Add a line break at the &end (as echo does)", 7, 122, 200, 10},
      {IDC_HT_COPY, u"&Copy", 222, 229, 54, 14},
      {IDCANCEL, u"Close", 279, 229, 54, 14},
  };
  for (const Designed& control : controls) {
    SCOPED_TRACE(control.id);
    EXPECT_EQ(dialog().Text(control.id), control.text);
    EXPECT_EQ(dialog().Place(control.id),
              window_.FromDialogUnits(control.x, control.y, control.width, control.height));
  }
  EXPECT_EQ(dialog().Text(IDC_HT_ENCODING), u"UTF-8");
  EXPECT_EQ(dialog().Text(IDC_HT_LINEBREAKS), u"Unix (LF)");
}

TEST_F(HashTextDialogTest, TheBoxesShareTheAddedHeight) {
  const auto places = [&] {
    std::vector<Rect> all;
    for (const int id :
         {IDC_HT_INPUT, IDC_HT_ENCODING, IDC_HT_RESULT, IDC_HT_COPY, IDC_HT_INPUT_LABEL}) {
      all.push_back(dialog().Place(id));
    }
    return all;
  };
  const std::vector<Rect> before = places();
  RECT outer;
  GetWindowRect(dialog().Handle(), &outer);
  const int width = outer.right - outer.left;
  const int height = outer.bottom - outer.top;
  SetWindowPos(dialog().Handle(), nullptr, 0, 0, width + 60, height + 41, SWP_NOMOVE);
  AskWindow(dialog().Handle(), WM_NULL);
  const auto moved = [](const Rect& rect, int left, int top, int right, int bottom) {
    return Rect{rect.left + left, rect.top + top, rect.right + right, rect.bottom + bottom};
  };
  EXPECT_EQ(places(),
            (std::vector<Rect>{moved(before[0], 0, 0, 60, 20), moved(before[1], 0, 20, 0, 20),
                               moved(before[2], 0, 20, 60, 41), moved(before[3], 60, 41, 60, 41),
                               before[4]}));
  SetWindowPos(dialog().Handle(), nullptr, 0, 0, width - 100, height - 100, SWP_NOMOVE);
  AskWindow(dialog().Handle(), WM_NULL);
  EXPECT_EQ(places(), before) << "it cannot be made smaller";
}

TEST_F(HashTextDialogTest, ALongTextIsPastedWhole) {
  const std::u16string line =
      u"A line of sixty-four units, as people write them in their mails\r\n";
  std::u16string text;
  constexpr size_t lines = 16384;  // about 1 MiB
  for (size_t i = 0; i < lines; ++i) text += line;
  CopyText(text);
  AskWindow(dialog().Control(IDC_HT_INPUT), WM_PASTE);
  EXPECT_EQ(Count(), swr::DecimalText(lines * (line.size() - 1)) + u" bytes");
}

}  // namespace
}  // namespace app::testing
