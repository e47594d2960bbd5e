// How the result line is drawn, pixel by pixel, on a bitmap that is independent of the screen's
// colours.
#include "app/window/result_control_win.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "swr/system/unique_handle.h"

namespace app::testing {
namespace {

constexpr int Width = 400;
constexpr int Height = 24;
constexpr COLORREF Green = RGB(16, 124, 16);
constexpr COLORREF Red = RGB(196, 43, 28);

struct DeviceContextTraits {
  using Value = HDC;
  static constexpr HDC Invalid = nullptr;
  static void Close(HDC value) noexcept { DeleteDC(value); }
};

struct WindowTraits {
  using Value = HWND;
  static constexpr HWND Invalid = nullptr;
  static void Close(HWND value) noexcept { DestroyWindow(value); }
};

// A result line on a window that is never shown.
class ResultControlTest : public ::testing::Test {
 protected:
  ResultControlTest()
      : parent_(MakeWindow(nullptr)),
        child_(MakeWindow(parent_.Get())),
        dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {.biSize = sizeof info.bmiHeader,
                      .biWidth = Width,
                      .biHeight = -Height,
                      .biPlanes = 1,
                      .biBitCount = 32};
    void* bits = nullptr;
    bitmap_.Reset(CreateDIBSection(dc_.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    pixels_ = static_cast<const uint32_t*>(bits);
    oldBitmap_ = SelectObject(dc_.Get(), bitmap_.Get());
    control_.Attach(child_.Get(), 96);
  }
  ~ResultControlTest() override { SelectObject(dc_.Get(), oldBitmap_); }

  static HWND MakeWindow(HWND parent) {
    return CreateWindowExW(0, L"STATIC", L"", parent == nullptr ? WS_POPUP : WS_CHILD, 0, 0, Width,
                           Height, parent, nullptr, nullptr, nullptr);
  }

  void Draw(bool highContrast) {
    DRAWITEMSTRUCT item = {};
    item.hDC = dc_.Get();
    item.rcItem = {0, 0, Width, Height};
    control_.Draw(item, highContrast);
    GdiFlush();
  }
  COLORREF PixelAt(int x, int y) const {
    const uint32_t pixel = pixels_[y * Width + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  }
  // The number of pixels of exactly this colour, from this column on.
  int Count(COLORREF color, int firstX) const {
    int count = 0;
    for (int y = 0; y < Height; ++y) {
      for (int x = firstX; x < Width; ++x) count += PixelAt(x, y) == color ? 1 : 0;
    }
    return count;
  }

  swr::UniqueHandle<WindowTraits> parent_;
  swr::UniqueHandle<WindowTraits> child_;
  swr::UniqueHandle<DeviceContextTraits> dc_;
  Bitmap bitmap_;
  HGDIOBJ oldBitmap_ = nullptr;
  const uint32_t* pixels_ = nullptr;
  ResultControl control_;
};

constexpr int TextLeft = 16 + 6;  // after the icon

TEST_F(ResultControlTest, EachVerdictHasItsColourUnlessContrastIsHigh) {
  struct Case {
    const char* description;
    ResultKind kind;
    bool highContrast;
    COLORREF color;
  };
  const COLORREF text = GetSysColor(COLOR_BTNTEXT);
  const Case cases[] = {
      {"a match", ResultKind::Good, false, Green},
      {"no match", ResultKind::Bad, false, Red},
      {"a hint", ResultKind::Hint, false, text},
      {"busy", ResultKind::Busy, false, text},
      {"a match in high contrast", ResultKind::Good, true, text},
      {"no match in high contrast", ResultKind::Bad, true, text},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    // Their straight edges have pixels of exactly the text's colour, even with font smoothing.
    control_.Set(u"\u2588\u2588 IIII ||||", test.kind);
    Draw(test.highContrast);
    for (const COLORREF color : {Green, Red, text}) {
      if (color == test.color) {
        EXPECT_GT(Count(color, TextLeft), 20);
      } else {
        EXPECT_EQ(Count(color, TextLeft), 0);
      }
    }
  }
}

TEST_F(ResultControlTest, WithoutAVerdictTheLineIsEmpty) {
  control_.Set(u"Match.", ResultKind::Good);
  Draw(false);
  control_.Set(u"", ResultKind::None);
  Draw(false);
  EXPECT_EQ(Count(GetSysColor(COLOR_BTNFACE), 0), Width * Height);
}

TEST_F(ResultControlTest, TheTextLeavesRoomForTheIcon) {
  control_.Set(u"\u2588\u2588", ResultKind::Good);
  Draw(true);
  EXPECT_EQ(Count(GetSysColor(COLOR_BTNTEXT), 0), Count(GetSysColor(COLOR_BTNTEXT), TextLeft));
}

TEST_F(ResultControlTest, ALongSentenceEndsInAnEllipsis) {
  control_.Set(std::u16string(300, u'W'), ResultKind::Hint);
  Draw(false);
  const std::vector<uint32_t> drawn(pixels_, pixels_ + Width * Height);
  control_.Set(std::u16string(400, u'W'), ResultKind::Hint);
  Draw(false);
  EXPECT_EQ(std::vector<uint32_t>(pixels_, pixels_ + Width * Height), drawn);
  // An ellipsis leaves the right edge nearly empty, where a letter would be cut off otherwise.
  int onRightEdge = 0;
  for (int y = 0; y < Height; ++y) {
    onRightEdge += PixelAt(Width - 1, y) != GetSysColor(COLOR_BTNFACE) ? 1 : 0;
  }
  EXPECT_LT(onRightEdge, 3);
}

TEST_F(ResultControlTest, TheControlHasTheTextForScreenReaders) {
  control_.Set(u"All 3 files are OK.", ResultKind::Good);
  wchar_t text[64] = {};
  GetWindowTextW(child_.Get(), text, 64);
  EXPECT_STREQ(text, L"All 3 files are OK.");
}

}  // namespace
}  // namespace app::testing
