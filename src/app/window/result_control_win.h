// The result line: a picture and a sentence in the colour of the verdict.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

#include "app/desktop/gdi_handles_win.h"
#include "app/window/view.h"

namespace app {

class ResultControl {
 public:
  void Attach(HWND control, int dpi);
  // Makes the bold font anew from the dialog's own.
  void ChangeDpi(int dpi);

  void Set(const std::u16string& text, ResultKind kind);
  // Answers WM_DRAWITEM. In high contrast the verdict has the system's text colour; its words and
  // its picture tell it all the same.
  void Draw(const DRAWITEMSTRUCT& item, bool highContrast) const;

 private:
  HWND control_ = nullptr;
  int dpi_ = 96;
  Font boldFont_;
  std::u16string text_;
  ResultKind kind_ = ResultKind::None;
};

}  // namespace app
