#include "app/desktop/task_dialog_win.h"

#include <commctrl.h>

#include "swr/system/wide_text_win.h"

namespace app {
namespace {

const wchar_t* IconName(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Warning:
      return TD_WARNING_ICON;
    case MessageIcon::Error:
      return TD_ERROR_ICON;
    case MessageIcon::Information:
      break;
  }
  return TD_INFORMATION_ICON;
}

}  // namespace

void ShowTaskDialog(HWND owner, const Message& message) {
  TASKDIALOGCONFIG config = {};
  config.cbSize = sizeof config;
  config.hwndParent = owner;
  config.dwFlags =
      TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW | TDF_SIZE_TO_CONTENT;
  config.dwCommonButtons = TDCBF_OK_BUTTON;
  config.pszWindowTitle = L"Sumwright";
  config.pszMainIcon = IconName(message.icon);
  config.pszMainInstruction = swr::AsWide(message.instruction);
  config.pszContent = message.content.empty() ? nullptr : swr::AsWide(message.content);
  TaskDialogIndirect(&config, nullptr, nullptr, nullptr);
}

}  // namespace app
