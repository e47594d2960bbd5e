// Ownership of the drawing objects that the window makes.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>

#include "swr/system/unique_handle.h"

namespace app {

struct ImageListTraits {
  using Value = HIMAGELIST;
  static constexpr HIMAGELIST Invalid = nullptr;
  static void Close(HIMAGELIST value) noexcept { ImageList_Destroy(value); }
};
using ImageList = swr::UniqueHandle<ImageListTraits>;

struct IconTraits {
  using Value = HICON;
  static constexpr HICON Invalid = nullptr;
  static void Close(HICON value) noexcept { DestroyIcon(value); }
};
using Icon = swr::UniqueHandle<IconTraits>;

struct BitmapTraits {
  using Value = HBITMAP;
  static constexpr HBITMAP Invalid = nullptr;
  static void Close(HBITMAP value) noexcept { DeleteObject(value); }
};
using Bitmap = swr::UniqueHandle<BitmapTraits>;

struct FontTraits {
  using Value = HFONT;
  static constexpr HFONT Invalid = nullptr;
  static void Close(HFONT value) noexcept { DeleteObject(value); }
};
using Font = swr::UniqueHandle<FontTraits>;

// An icon of the program's resources at exactly `size` pixels, scaled down from the next larger
// drawing. Empty when it can't be loaded.
Icon LoadScaledIcon(int id, int size);

// The same picture in pale grey, for a button that can't be pressed. Empty when it can't be made.
Icon MakeDisabledIcon(const Icon& icon);

}  // namespace app
