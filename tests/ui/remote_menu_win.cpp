#include "tests/ui/remote_menu_win.h"

#include <utility>

#include "swr/system/wide_text_win.h"

namespace app::testing {
namespace {

constexpr uint64_t MaxText = 8192;
constexpr UINT MN_GETHMENU_MESSAGE = 0x01E1;  // of a window of class "#32768": its menu

}  // namespace

std::vector<MenuItem> ReadMenu(const RemoteCaller& caller, uint64_t menu) {
  std::vector<MenuItem> items;
  const auto count = static_cast<int>(caller.Call(GetMenuItemCount, {menu}));
  for (int i = 0; i < count; ++i) {
    const auto position = static_cast<uint64_t>(i);
    const auto state =
        static_cast<uint32_t>(caller.Call(GetMenuState, {menu, position, MF_BYPOSITION}));
    MenuItem item;
    item.isEnabled = (state & (MF_GRAYED | MF_DISABLED)) == 0;
    item.isChecked = (state & MF_CHECKED) != 0;
    if ((state & MF_SEPARATOR) == 0 || (state & MF_POPUP) != 0) {
      item.id = static_cast<uint32_t>(caller.Call(GetMenuItemID, {menu, position}));
      const uint64_t length = caller.Call(
          GetMenuStringW, {menu, position, caller.ScratchAddress(), MaxText, MF_BYPOSITION});
      wchar_t text[MaxText] = {};
      caller.Scratch().Read(0, text, sizeof text);
      item.text = swr::FromWide({text, static_cast<uint32_t>(length)});
    }
    items.push_back(std::move(item));
  }
  return items;
}

std::optional<uint64_t> FindOpenMenu(DWORD processId) {
  HWND popup = nullptr;
  while ((popup = FindWindowExW(nullptr, popup, L"#32768", nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(popup, &process);
    if (process != processId || !IsWindowVisible(popup)) continue;
    DWORD_PTR menu = 0;
    // It may be closing at this moment.
    if (!SendMessageTimeoutW(popup, MN_GETHMENU_MESSAGE, 0, 0, SMTO_NORMAL, 5000, &menu)) continue;
    return menu;
  }
  return std::nullopt;
}

}  // namespace app::testing
