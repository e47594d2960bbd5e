#include "app/window/menu_controls_win.h"

#include <algorithm>
#include <iterator>

#include "app/screen/algo_boxes.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr int OptionsMenuPosition = 2;  // from the left

}  // namespace

void MenuControls::ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) {
  for (const AlgoBox& box : AlgoBoxes) {
    const bool isSelected = (mask & swr::MaskOf(box.algo)) != 0;
    CheckDlgButton(dialog_, static_cast<int>(box.control),
                   isSelected ? BST_CHECKED : BST_UNCHECKED);
  }
  SetDlgItemTextW(dialog_, IDC_ALGO_MORE, swr::AsWide(moreText));
}

bool MenuControls::IsAlgoChecked(swr::AlgoId id) const {
  const auto box = std::ranges::find(AlgoBoxes, id, &AlgoBox::algo);
  return box != std::end(AlgoBoxes) &&
         IsDlgButtonChecked(dialog_, static_cast<int>(box->control)) == BST_CHECKED;
}

void MenuControls::ShowOptions(const OptionChecks& checks) {
  const auto check = [menu = GetMenu(dialog_)](UINT id, bool isOn) {
    CheckMenuItem(menu, id, MF_BYCOMMAND | static_cast<UINT>(isOn ? MF_CHECKED : MF_UNCHECKED));
  };
  check(ID_UPPERCASE, checks.uppercase);
  check(ID_SHOW_LEGACY, checks.showLegacy);
  check(ID_INCLUDE_HIDDEN, checks.includeHidden);
  check(ID_CRLF, checks.crLf);
  if (!checks.shellEntries) return;
  check(ID_EXPLORER_MENU, checks.shellEntries->explorerMenu);
  check(ID_SEND_TO, checks.shellEntries->sendTo);
  EnableMenuItem(
      GetMenu(dialog_), ID_EXPLORER_MENU,
      static_cast<UINT>(checks.shellEntries->canChangeExplorerMenu ? MF_ENABLED : MF_GRAYED));
}

void MenuControls::RemoveShellEntryCommands() {
  const HMENU options = GetSubMenu(GetMenu(dialog_), OptionsMenuPosition);
  RemoveMenu(options, ID_EXPLORER_MENU, MF_BYCOMMAND);
  RemoveMenu(options, ID_SEND_TO, MF_BYCOMMAND);
  // The separator above them.
  RemoveMenu(options, static_cast<UINT>(GetMenuItemCount(options) - 1), MF_BYPOSITION);
}

void MenuControls::SetProgramFolderText(const std::u16string& text) {
  ModifyMenuW(GetMenu(dialog_), ID_PROGRAM_FOLDER, MF_BYCOMMAND | MF_STRING, ID_PROGRAM_FOLDER,
              swr::AsWide(text));
}

}  // namespace app
