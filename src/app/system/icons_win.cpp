#include "app/system/icons_win.h"

#include <cstdint>
#include <vector>

#include "swr/system/system_library_win.h"

namespace app {

Icon LoadScaledIcon(int id, int size) {
  // Missing from the tool chain's import library.
  static HRESULT(WINAPI* const load)(HINSTANCE, PCWSTR, int, int, HICON*) =
      swr::FindLoadedFunction(L"comctl32.dll", "LoadIconWithScaleDown");
  HICON icon = nullptr;
  if (load == nullptr ||
      FAILED(load(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), size, size, &icon))) {
    return Icon();
  }
  return Icon(icon);
}

Icon MakeDisabledIcon(const Icon& icon) {
  ICONINFO info;
  if (!icon || !GetIconInfo(icon.Get(), &info)) return Icon();
  const Bitmap color(info.hbmColor);
  const Bitmap mask(info.hbmMask);
  BITMAP bitmap;
  if (GetObjectW(color.Get(), sizeof bitmap, &bitmap) == 0) return Icon();
  const auto height = static_cast<UINT>(bitmap.bmHeight);
  BITMAPINFO format = {};
  format.bmiHeader = {.biSize = sizeof format.bmiHeader,
                      .biWidth = bitmap.bmWidth,
                      .biHeight = bitmap.bmHeight,
                      .biPlanes = 1,
                      .biBitCount = 32,
                      .biCompression = BI_RGB};
  std::vector<RGBQUAD> pixels(static_cast<size_t>(bitmap.bmWidth) * height);
  const HDC screen = GetDC(nullptr);
  GetDIBits(screen, color.Get(), 0, height, pixels.data(), &format, DIB_RGB_COLORS);
  for (RGBQUAD& pixel : pixels) {
    // Luma weights of ITU-R BT.601; the last byte is the opacity.
    const auto grey =
        static_cast<BYTE>((pixel.rgbRed * 77 + pixel.rgbGreen * 150 + pixel.rgbBlue * 29) / 256);
    pixel = {grey, grey, grey, static_cast<BYTE>(pixel.rgbReserved * 2 / 5)};
  }
  SetDIBits(screen, color.Get(), 0, height, pixels.data(), &format, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  return Icon(CreateIconIndirect(&info));
}

}  // namespace app
