// The pop-up menus of the window.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/screen/popup_menus.h"
#include "app/window/list_control_win.h"

namespace app {

class WindowPopupMenus final : public PopupMenus {
 public:
  // The list must outlive the object.
  void Attach(HWND dialog, const ListControl& list) {
    dialog_ = dialog;
    list_ = &list;
  }

  std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) override;
  std::optional<ListMenuChoice> ChooseListCommand(const ListMenuEntries& menu,
                                                  std::optional<ScreenPoint> at) override;

 private:
  HWND dialog_ = nullptr;
  const ListControl* list_ = nullptr;
};

}  // namespace app
