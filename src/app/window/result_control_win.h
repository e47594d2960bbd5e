// The control of the result line: an icon and a sentence in the colour of the verdict.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>

#include "app/system/window_handles_win.h"
#include "app/verdicts/result_line.h"

namespace app {

class ResultControl {
 public:
  void Attach(HWND control, int dpi);
  // Recreates the bold font from the dialog's font.
  void ChangeDpi(int dpi);

  void Set(const std::u16string& text, ResultKind kind);
  // Handles WM_DRAWITEM. In high contrast the sentence has the system's text colour; its words and
  // its icon still give the verdict.
  void Draw(const DRAWITEMSTRUCT& item, bool highContrast) const;

 private:
  HWND control_ = nullptr;
  int dpi_ = 96;
  Font boldFont_;
  std::u16string text_;
  ResultKind kind_ = ResultKind::None;
};

}  // namespace app
