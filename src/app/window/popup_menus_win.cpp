#include "app/window/popup_menus_win.h"

#include "app/screen/algo_menu.h"
#include "app/system/window_handles_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {

std::optional<swr::AlgoId> WindowPopupMenus::ChooseAlgo(swr::AlgoMask mask, bool withLegacy) {
  const Menu menu(CreatePopupMenu());
  for (const AlgoMenuItem& item : BuildAlgoMenu(mask, withLegacy)) {
    if (item.separatorBefore) AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.Get(), static_cast<UINT>(item.checked ? MF_CHECKED : MF_UNCHECKED),
                ID_ALGO_FIRST + swr::IndexOf(item.algo), swr::AsWide(item.text));
  }
  RECT button;
  GetWindowRect(GetDlgItem(dialog_, IDC_ALGO_MORE), &button);
  const auto chosen = static_cast<uint32_t>(
      TrackPopupMenu(menu.Get(), TPM_RETURNCMD, button.left, button.bottom, 0, dialog_, nullptr));
  if (chosen < ID_ALGO_FIRST || chosen >= ID_ALGO_FIRST + swr::AlgoCount) {
    return std::nullopt;
  }
  return static_cast<swr::AlgoId>(chosen - ID_ALGO_FIRST);
}

std::optional<ListMenuChoice> WindowPopupMenus::ChooseListCommand(const ListMenuEntries& menu,
                                                                  std::optional<ScreenPoint> at) {
  const Menu loaded(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_LIST_MENU)));
  const HMENU popup = GetSubMenu(loaded.Get(), 0);
  UINT position = 0;
  for (const swr::AlgoId id : menu.digests) {
    std::u16string text = u"Copy ";
    text += swr::GetAlgo(id).name;
    InsertMenuW(popup, position++, MF_BYPOSITION, ID_COPY_DIGEST_FIRST + swr::IndexOf(id),
                swr::AsWide(text));
  }
  if (position > 0) InsertMenuW(popup, position, MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
  const auto enable = [popup](UINT id, bool can) {
    EnableMenuItem(popup, id, static_cast<UINT>(can ? MF_ENABLED : MF_GRAYED));
  };
  enable(ID_CTX_COMPARE, menu.canCompare);
  enable(ID_CTX_VIRUSTOTAL, menu.canLookUp);
  const POINT place = at ? POINT{at->x, at->y} : list_->MenuPosition();
  const auto chosen = static_cast<uint32_t>(TrackPopupMenu(popup, TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                                           place.x, place.y, 0, dialog_, nullptr));
  if (chosen == 0) return std::nullopt;
  if (chosen >= ID_COPY_DIGEST_FIRST) {
    return ListMenuChoice{.digest = static_cast<swr::AlgoId>(chosen - ID_COPY_DIGEST_FIRST)};
  }
  return ListMenuChoice{.command = chosen};
}

}  // namespace app
