#include "app/desktop/task_dialog_win.h"

#include <commctrl.h>

#include <vector>

#include "app/desktop/addresses.h"
#include "app/desktop/shell_win.h"
#include "app/system/icons_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

static_assert(OkButton == TDCBF_OK_BUTTON && CloseButton == TDCBF_CLOSE_BUTTON &&
              CancelAnswer == IDCANCEL);

const wchar_t* IconName(TaskDialogIcon icon) {
  switch (icon) {
    case TaskDialogIcon::Information:
      return TD_INFORMATION_ICON;
    case TaskDialogIcon::Warning:
      return TD_WARNING_ICON;
    case TaskDialogIcon::Error:
      return TD_ERROR_ICON;
    case TaskDialogIcon::None:
      break;
  }
  return nullptr;
}

const wchar_t* TextOrNothing(const std::u16string& text) {
  return text.empty() ? nullptr : swr::AsWide(text);
}

HRESULT CALLBACK OnTaskDialog(HWND, UINT notification, WPARAM, LPARAM lParam, LONG_PTR) noexcept {
  if (notification == TDN_HYPERLINK_CLICKED) {
    const std::u16string address = swr::FromWide(reinterpret_cast<const wchar_t*>(lParam));
    if (MayLinkTo(address)) OpenWithShell(address);
  }
  return S_OK;
}

}  // namespace

int ShowTaskDialog(HWND owner, const TaskDialogSpec& spec) {
  std::vector<TASKDIALOG_BUTTON> buttons;
  for (const TaskDialogButton& button : spec.buttons) {
    buttons.push_back({button.id, swr::AsWide(button.text)});
  }
  Icon icon;
  if (spec.icon == TaskDialogIcon::None && spec.customIcon != 0) {
    icon = LoadScaledIcon(spec.customIcon, GetSystemMetrics(SM_CXICON));
  }
  TASKDIALOGCONFIG config = {};
  config.cbSize = sizeof config;
  config.hwndParent = owner;
  config.dwFlags = TDF_ENABLE_HYPERLINKS | TDF_ALLOW_DIALOG_CANCELLATION |
                   TDF_POSITION_RELATIVE_TO_WINDOW | TDF_SIZE_TO_CONTENT;
  if (spec.commandLinks && !buttons.empty()) config.dwFlags |= TDF_USE_COMMAND_LINKS;
  if (icon) {
    config.dwFlags |= TDF_USE_HICON_MAIN;
    config.hMainIcon = icon.Get();
  } else {
    config.pszMainIcon = IconName(spec.icon);
  }
  config.dwCommonButtons = static_cast<TASKDIALOG_COMMON_BUTTON_FLAGS>(
      buttons.empty() && spec.commonButtons == 0 ? OkButton : spec.commonButtons);
  config.pszWindowTitle = spec.title.empty() ? L"Sumwright" : swr::AsWide(spec.title);
  config.pszMainInstruction = swr::AsWide(spec.mainInstruction);
  config.pszContent = TextOrNothing(spec.content);
  config.cButtons = static_cast<UINT>(buttons.size());
  config.pButtons = buttons.data();
  config.nDefaultButton = spec.defaultButton;
  config.pszFooter = TextOrNothing(spec.footer);
  if (!spec.footer.empty()) config.pszFooterIcon = TD_INFORMATION_ICON;
  config.pfCallback = OnTaskDialog;
  int answer = CancelAnswer;
  return TaskDialogIndirect(&config, &answer, nullptr, nullptr) == S_OK ? answer : CancelAnswer;
}

int TaskDialogs::ShowTaskDialog(const TaskDialogSpec& spec) {
  return app::ShowTaskDialog(owner_, spec);
}

}  // namespace app
