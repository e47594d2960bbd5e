// The list's context menu.
#pragma once

#include <optional>

#include "app/flows/commands.h"
#include "app/flows/copying.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/popup_menus.h"

namespace app {

class ListMenu {
 public:
  // All must outlive the object.
  ListMenu(const RowTable& rows, const Selection& selection, Commands& commands, Copying& copying,
           PopupMenus& popups);

  // Shows the menu for the selected rows at this point, or beside the focused row, and carries out
  // the chosen command on the rows that were selected when the menu opened. Does nothing without a
  // selection.
  void Show(std::optional<ScreenPoint> at);

 private:
  const RowTable& rows_;
  const Selection& selection_;
  Commands& commands_;
  Copying& copying_;
  PopupMenus& popups_;
};

}  // namespace app
