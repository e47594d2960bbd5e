#include "app/window/dialog_view_win.h"

#include <array>
#include <iterator>

#include "app/window/algo_boxes.h"
#include "app/window/algo_menu.h"
#include "app/window/focused_edit_win.h"
#include "resources/resource_ids.h"
#include "swr/system/unique_handle.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

struct MenuTraits {
  using Value = HMENU;
  static constexpr HMENU Invalid = nullptr;
  static void Close(HMENU value) noexcept { DestroyMenu(value); }
};

}  // namespace

void DialogView::Attach(HWND dialog, int dpi) {
  dialog_ = dialog;
  list.Attach(GetDlgItem(dialog, IDC_LIST), dpi);
  SendDlgItemMessageW(dialog, IDC_PROGRESS, PBM_SETRANGE32, 0, 10000);
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

void DialogView::ShowOptions(const OptionChecks& checks) {
  const auto check = [menu = GetMenu(dialog_)](UINT id, bool isOn) {
    CheckMenuItem(menu, id, MF_BYCOMMAND | static_cast<UINT>(isOn ? MF_CHECKED : MF_UNCHECKED));
  };
  check(ID_UPPERCASE, checks.uppercase);
  check(ID_SHOW_LEGACY, checks.showLegacy);
  check(ID_INCLUDE_HIDDEN, checks.includeHidden);
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

void DialogView::Show(int control, bool shows) {
  const HWND window = GetDlgItem(dialog_, control);
  // The control's own wish, whether or not the dialog shows already.
  const bool showsNow = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (shows == showsNow) return;
  // A focus that disappeared with its control would leave the keyboard without one.
  if (!shows && GetFocus() == window) {
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog_, IDC_LIST)),
                 TRUE);
  }
  ShowWindow(window, shows ? SW_SHOWNA : SW_HIDE);
}

}  // namespace app
