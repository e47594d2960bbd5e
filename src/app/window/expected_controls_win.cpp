#include "app/window/expected_controls_win.h"

#include <commctrl.h>

#include "app/system/control_text_win.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {

void ExpectedControls::Attach(HWND dialog, int dpi) {
  dialog_ = dialog;
  result_.Attach(GetDlgItem(dialog, IDC_RESULT), dpi);
  SendDlgItemMessageW(
      dialog, IDC_EXPECTED, EM_SETCUEBANNER, TRUE,
      reinterpret_cast<LPARAM>(L"Paste the hash from the download page to compare"));
}

void ExpectedControls::RedrawResult() const {
  InvalidateRect(GetDlgItem(dialog_, IDC_RESULT), nullptr, TRUE);
}

std::u16string ExpectedControls::ExpectedText() const {
  return ControlText(GetDlgItem(dialog_, IDC_EXPECTED));
}

void ExpectedControls::SetExpectedText(const std::u16string& text) {
  SetDlgItemTextW(dialog_, IDC_EXPECTED, swr::AsWide(text));
}

}  // namespace app
