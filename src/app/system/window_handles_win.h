// Owners of the handles and interfaces that only the code for windows and the shell uses;
// swr/system/handles_win.h has the others.
#pragma once

#include "swr/system/windows_api_win.h"

#include <commctrl.h>
#include <shlobj.h>

#include "swr/system/unique_handle.h"

namespace app {

// GDI objects.
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

// Menus.
struct MenuTraits {
  using Value = HMENU;
  static constexpr HMENU Invalid = nullptr;
  static void Close(HMENU value) noexcept { DestroyMenu(value); }
};
using Menu = swr::UniqueHandle<MenuTraits>;

// Items of the shell.
struct ItemIdListTraits {
  using Value = PIDLIST_ABSOLUTE;
  static constexpr PIDLIST_ABSOLUTE Invalid = nullptr;
  static void Close(PIDLIST_ABSOLUTE value) noexcept { ILFree(value); }
};
using ItemIdList = swr::UniqueHandle<ItemIdListTraits>;

// COM interfaces.
template <typename Interface>
struct ComTraits {
  using Value = Interface*;
  static constexpr Interface* Invalid = nullptr;
  static void Close(Interface* value) noexcept { value->Release(); }
};
template <typename Interface>
using ComPointer = swr::UniqueHandle<ComTraits<Interface>>;

}  // namespace app
