#include "app/window/dialog_view_win.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "app/desktop/control_text_win.h"
#include "app/window/algo_boxes.h"
#include "app/window/algo_menu.h"
#include "app/window/focused_edit_win.h"
#include "resources/resource_ids.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr uint32_t CopyDigestFirstCommand = 41100;  // and the AlgoId
constexpr int OptionsMenu = 2;                      // from the left

struct MenuTraits {
  using Value = HMENU;
  static constexpr HMENU Invalid = nullptr;
  static void Close(HMENU value) noexcept { DestroyMenu(value); }
};

}  // namespace

void DialogView::Attach(HWND dialog, int dpi) {
  dialog_ = dialog;
  dpi_ = dpi;
  RECT rect;
  GetWindowRect(dialog, &rect);
  smallestSize_ = {rect.right - rect.left, rect.bottom - rect.top};
  list.Attach(GetDlgItem(dialog, IDC_LIST), dpi);
  result.Attach(GetDlgItem(dialog, IDC_RESULT), dpi);
  SendDlgItemMessageW(dialog, IDC_PROGRESS, PBM_SETRANGE32, 0, 10000);
}

void DialogView::ChangeDpi(int dpi) {
  list.ChangeDpi(dpi);
  smallestSize_ = {MulDiv(smallestSize_.cx, dpi, dpi_), MulDiv(smallestSize_.cy, dpi, dpi_)};
  dpi_ = dpi;
}

bool DialogView::PasteIntoFocusedEdit() {
  const HWND edit = FocusedEdit();
  if (edit != nullptr) SendMessageW(edit, WM_PASTE, 0, 0);
  return edit != nullptr;
}

bool DialogView::CopyFromFocusedEdit() {
  const HWND edit = FocusedEdit();
  if (edit != nullptr) SendMessageW(edit, WM_COPY, 0, 0);
  return edit != nullptr;
}

void DialogView::SelectAll() {
  if (const HWND edit = FocusedEdit()) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
  } else {
    list.SelectAllRows();
  }
}

void DialogView::ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) {
  for (const AlgoBox& box : AlgoBoxes) {
    const bool isSelected = (mask & swr::MaskOf(box.algo)) != 0;
    CheckDlgButton(dialog_, static_cast<int>(box.control),
                   isSelected ? BST_CHECKED : BST_UNCHECKED);
  }
  SetDlgItemTextW(dialog_, IDC_ALGO_MORE, swr::AsWide(moreText));
}

bool DialogView::IsAlgoChecked(swr::AlgoId id) const {
  const auto box = std::ranges::find(AlgoBoxes, id, &AlgoBox::algo);
  return box != std::end(AlgoBoxes) &&
         IsDlgButtonChecked(dialog_, static_cast<int>(box->control)) == BST_CHECKED;
}

void DialogView::ShowOptions(const OptionChecks& checks) {
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

void DialogView::RemoveShellEntryCommands() {
  const HMENU options = GetSubMenu(GetMenu(dialog_), OptionsMenu);
  RemoveMenu(options, ID_EXPLORER_MENU, MF_BYCOMMAND);
  RemoveMenu(options, ID_SEND_TO, MF_BYCOMMAND);
  // The separator that stood before them.
  RemoveMenu(options, static_cast<UINT>(GetMenuItemCount(options) - 1), MF_BYPOSITION);
}

void DialogView::SetProgramFolderText(const std::u16string& text) {
  ModifyMenuW(GetMenu(dialog_), ID_PROGRAM_FOLDER, MF_BYCOMMAND | MF_STRING, ID_PROGRAM_FOLDER,
              swr::AsWide(text));
}

std::optional<swr::AlgoId> DialogView::ChooseAlgo(swr::AlgoMask mask, bool withLegacy) {
  const swr::UniqueHandle<MenuTraits> menu(CreatePopupMenu());
  for (const AlgoMenuItem& item : BuildAlgoMenu(mask, withLegacy)) {
    if (item.separatorBefore) AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.Get(), static_cast<UINT>(item.checked ? MF_CHECKED : MF_UNCHECKED),
                AlgoMenuFirstCommand + swr::IndexOf(item.algo), swr::AsWide(item.text));
  }
  RECT button;
  GetWindowRect(GetDlgItem(dialog_, IDC_ALGO_MORE), &button);
  const auto chosen = static_cast<uint32_t>(
      TrackPopupMenu(menu.Get(), TPM_RETURNCMD, button.left, button.bottom, 0, dialog_, nullptr));
  if (chosen < AlgoMenuFirstCommand || chosen >= AlgoMenuFirstCommand + swr::AlgoCount) {
    return std::nullopt;
  }
  return static_cast<swr::AlgoId>(chosen - AlgoMenuFirstCommand);
}

std::u16string DialogView::ExpectedText() const {
  return ControlText(GetDlgItem(dialog_, IDC_EXPECTED));
}

void DialogView::SetExpectedText(const std::u16string& text) {
  SetDlgItemTextW(dialog_, IDC_EXPECTED, swr::AsWide(text));
}

void DialogView::ShowBanner(const std::u16string& markup) {
  SetDlgItemTextW(dialog_, IDC_BANNER, swr::AsWide(markup));
  bannerShows_ = true;
  Show(IDC_BANNER, true);
  ApplyLayout();
}

void DialogView::HideBanner() {
  bannerShows_ = false;
  Show(IDC_BANNER, false);
  SetDlgItemTextW(dialog_, IDC_BANNER, L"");
  ApplyLayout();
}

void DialogView::SetDetails(const std::u16string& text, const DetailButtons& buttons) {
  // The same text again would scroll the pane back to its top.
  if (text != detailsText_) {
    detailsText_ = text;
    SetDlgItemTextW(dialog_, IDC_DETAILS, swr::AsWide(text));
  }
  Enable(IDC_COPY, buttons.copyHashes);
  Enable(IDC_VIRUSTOTAL, buttons.lookUpOnline);
  Enable(IDC_OPEN_FOLDER, buttons.openFolder);
}

std::optional<ListMenuChoice> DialogView::ChooseListCommand(const ListMenu& menu,
                                                            std::optional<ScreenPoint> at) {
  const swr::UniqueHandle<MenuTraits> loaded(
      LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_LIST_MENU)));
  const HMENU popup = GetSubMenu(loaded.Get(), 0);
  UINT position = 0;
  for (const swr::AlgoId id : menu.digests) {
    std::u16string text = u"Copy ";
    text += swr::GetAlgo(id).name;
    InsertMenuW(popup, position++, MF_BYPOSITION, CopyDigestFirstCommand + swr::IndexOf(id),
                swr::AsWide(text));
  }
  if (position > 0) InsertMenuW(popup, position, MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
  const auto enable = [popup](UINT id, bool can) {
    EnableMenuItem(popup, id, static_cast<UINT>(can ? MF_ENABLED : MF_GRAYED));
  };
  enable(ID_CTX_COMPARE, menu.canCompare);
  enable(ID_CTX_VIRUSTOTAL, menu.canLookUp);
  const POINT place = at ? POINT{at->x, at->y} : list.MenuPlace();
  const auto chosen = static_cast<uint32_t>(TrackPopupMenu(popup, TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                                           place.x, place.y, 0, dialog_, nullptr));
  if (chosen == 0) return std::nullopt;
  if (chosen >= CopyDigestFirstCommand) {
    return ListMenuChoice{.digest = static_cast<swr::AlgoId>(chosen - CopyDigestFirstCommand)};
  }
  return ListMenuChoice{.command = chosen};
}

void DialogView::SetStatusText(const std::u16string& text) {
  if (text == statusText_) return;  // a static control repaints for the same text too
  statusText_ = text;
  SetDlgItemTextW(dialog_, IDC_STATUS_TEXT, swr::AsWide(text));
}

void DialogView::ShowProgress(const std::optional<ProgressFigures>& figures) {
  if (figures) {
    SendDlgItemMessageW(dialog_, IDC_PROGRESS, PBM_SETPOS, figures->position, 0);
    taskbar.Show(figures->doneBytes, figures->totalBytes);
  } else {
    taskbar.Hide();
  }
  Show(IDC_PROGRESS, figures.has_value());
  Show(IDC_CANCEL, figures.has_value());
}

std::optional<WindowPlacement> DialogView::Placement() const {
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  if (!GetWindowPlacement(dialog_, &placement)) return std::nullopt;
  const RECT& rect = placement.rcNormalPosition;
  return WindowPlacement{rect.left, rect.top, rect.right, rect.bottom,
                         placement.showCmd == SW_SHOWMAXIMIZED};
}

bool DialogView::MoveTo(const WindowPlacement& placement) {
  const RECT rect = {placement.left, placement.top, placement.right, placement.bottom};
  if (rect.right - rect.left < smallestSize_.cx || rect.bottom - rect.top < smallestSize_.cy ||
      MonitorFromRect(&rect, MONITOR_DEFAULTTONULL) == nullptr) {
    return false;
  }
  WINDOWPLACEMENT moved = {};
  moved.length = sizeof moved;
  moved.rcNormalPosition = rect;
  SetWindowPlacement(dialog_, &moved);
  return true;
}

void DialogView::Show(int control, bool shows) {
  const HWND window = GetDlgItem(dialog_, control);
  // The control's own wish, whether or not the dialog shows already.
  const bool showsNow = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (shows == showsNow) return;
  if (!shows) MoveFocusFrom(window);
  ShowWindow(window, shows ? SW_SHOWNA : SW_HIDE);
}

void DialogView::Enable(int control, bool enabled) {
  const HWND window = GetDlgItem(dialog_, control);
  if (!enabled) MoveFocusFrom(window);
  EnableWindow(window, enabled);
}

// A focus that stayed on a control that is hidden or disabled would leave the keyboard dead.
void DialogView::MoveFocusFrom(HWND control) const {
  if (GetFocus() != control) return;
  SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog_, IDC_LIST)),
               TRUE);
}

}  // namespace app
