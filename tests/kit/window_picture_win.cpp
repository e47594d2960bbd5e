#include "tests/kit/window_picture_win.h"

#include <dwmapi.h>
#include <gdiplus.h>
#include <objidl.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"
#include "tests/kit/kit_environment.h"

namespace app::testing {
namespace {

constexpr DWORD PaintTime = 500;  // milliseconds, for animations of menus and themes

struct BitmapTraits {
  using Value = HBITMAP;
  static constexpr HBITMAP Invalid = nullptr;
  static void Close(HBITMAP bitmap) noexcept { DeleteObject(bitmap); }
};
using Bitmap = swr::UniqueHandle<BitmapTraits>;

struct DcTraits {
  using Value = HDC;
  static constexpr HDC Invalid = nullptr;
  static void Close(HDC dc) noexcept { DeleteDC(dc); }
};
using MemoryDc = swr::UniqueHandle<DcTraits>;

// On newer systems the window's rectangle includes an invisible border, through which other windows
// are visible.
RECT VisibleFrame(HWND window) {
  RECT frame = {};
  if (FAILED(DwmGetWindowAttribute(window, DWMWA_EXTENDED_FRAME_BOUNDS, &frame, sizeof frame))) {
    GetWindowRect(window, &frame);
  }
  return frame;
}

struct Collected {
  DWORD process;
  std::vector<RECT> frames;  // the topmost first
};

BOOL CALLBACK Collect(HWND window, LPARAM parameter) {
  auto& collected = *reinterpret_cast<Collected*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != collected.process || !IsWindowVisible(window) || IsIconic(window)) return TRUE;
  const RECT frame = VisibleFrame(window);
  if (frame.right > frame.left && frame.bottom > frame.top) collected.frames.push_back(frame);
  return TRUE;
}

CLSID PngEncoder() {
  UINT count = 0;
  UINT size = 0;
  Gdiplus::GetImageEncodersSize(&count, &size);
  std::vector<std::byte> memory(size);
  auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.data());
  Gdiplus::GetImageEncoders(count, size, encoders);
  for (UINT i = 0; i < count; ++i) {
    if (std::wstring_view(encoders[i].MimeType) == L"image/png") return encoders[i].Clsid;
  }
  throw std::runtime_error("there is no PNG encoder");
}

void SavePng(HBITMAP bitmap, const std::u16string& path) {
  Gdiplus::GdiplusStartupInput input;
  ULONG_PTR token = 0;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
    throw std::runtime_error("GDI+ does not start");
  }
  Gdiplus::Status status = Gdiplus::Ok;
  {
    Gdiplus::Bitmap image(bitmap, nullptr);
    const CLSID encoder = PngEncoder();
    status = image.Save(swr::AsWide(path), &encoder, nullptr);
  }
  Gdiplus::GdiplusShutdown(token);
  if (status != Gdiplus::Ok) throw std::runtime_error("the picture can't be saved");
}

}  // namespace

void TakePicture(const RunningWindow& window, const std::u16string& name) {
  const std::u16string folder = PictureFolder();
  if (folder.empty()) return;
  Sleep(PaintTime);
  window.Ping();
  Collected collected = {.process = window.ProcessId()};
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&collected));
  if (collected.frames.empty()) throw std::runtime_error("the program shows no window");
  RECT whole = collected.frames.front();
  for (const RECT& frame : collected.frames) {
    const RECT before = whole;
    UnionRect(&whole, &before, &frame);
  }
  const int width = whole.right - whole.left;
  const int height = whole.bottom - whole.top;
  const HDC screen = GetDC(nullptr);
  const Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
  {
    const MemoryDc target(CreateCompatibleDC(screen));
    const HGDIOBJ before = SelectObject(target.Get(), bitmap.Get());
    const RECT all = {0, 0, width, height};
    FillRect(target.Get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    for (const RECT& frame : collected.frames) {
      BitBlt(target.Get(), frame.left - whole.left, frame.top - whole.top, frame.right - frame.left,
             frame.bottom - frame.top, screen, frame.left, frame.top, SRCCOPY | CAPTUREBLT);
    }
    SelectObject(target.Get(), before);
  }
  ReleaseDC(nullptr, screen);
  SavePng(bitmap.Get(), folder + u"\\" + name + u".png");
}

}  // namespace app::testing
