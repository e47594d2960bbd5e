#include "app/window/details_controls_win.h"

#include "app/window/control_state_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {

void DetailsControls::Attach(HWND dialog) {
  dialog_ = dialog;
  UINT tabStop = 64;  // in units of the dialog
  SendDlgItemMessageW(dialog, IDC_DETAILS, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
}

void DetailsControls::SetDetails(const std::u16string& text, const DetailButtons& buttons) {
  // Setting the same text again would scroll the box back to its top.
  if (text != text_) {
    text_ = text;
    SetDlgItemTextW(dialog_, IDC_DETAILS, swr::AsWide(text));
  }
  EnableControl(dialog_, IDC_COPY, buttons.copyHashes);
  EnableControl(dialog_, IDC_VIRUSTOTAL, buttons.lookUpOnline);
  EnableControl(dialog_, IDC_OPEN_FOLDER, buttons.openFolder);
}

}  // namespace app
