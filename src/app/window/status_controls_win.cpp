#include "app/window/status_controls_win.h"

#include <commctrl.h>

#include "app/window/control_state_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {

void StatusControls::Attach(HWND dialog) {
  dialog_ = dialog;
  SendDlgItemMessageW(dialog, IDC_PROGRESS, PBM_SETRANGE32, 0, 10000);
}

void StatusControls::SetStatusText(const std::u16string& text) {
  if (text == text_) return;  // a static control repaints for the same text too
  text_ = text;
  SetDlgItemTextW(dialog_, IDC_STATUS_TEXT, swr::AsWide(text));
}

void StatusControls::ShowProgress(const std::optional<ProgressFigures>& figures) {
  if (figures) {
    SendDlgItemMessageW(dialog_, IDC_PROGRESS, PBM_SETPOS, figures->position, 0);
    taskbar_.Show(figures->doneBytes, figures->totalBytes);
  } else {
    taskbar_.Hide();
  }
  ShowControl(dialog_, IDC_PROGRESS, figures.has_value());
  ShowControl(dialog_, IDC_CANCEL, figures.has_value());
}

}  // namespace app
